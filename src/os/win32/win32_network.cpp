// The network and accounts service on Windows: names and groups from the network management
// functions, drive and printer connections through WNet, shared printers through the spooler,
// the host's address through Winsock, keystrokes through SendInput.
#include "os/win32/win32_network.hpp"

#include <winnetwk.h>
#include <winsock2.h>
#include <winspool.h>
#include <ws2tcpip.h>

#include <cwctype>

#include "value/text.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

// "X", "x:" and "X:\" all name the drive "X:"; other names (LPT1) pass as they are.
std::wstring local_device(const std::string& name) {
    std::wstring w = widen(text::trim(name));
    if (w.size() == 3 && w[1] == L':' && w[2] == L'\\') w.pop_back();
    const bool drive = (w.size() == 1 || (w.size() == 2 && w[1] == L':')) &&
                       ((w[0] >= L'a' && w[0] <= L'z') || (w[0] >= L'A' && w[0] <= L'Z'));
    return drive ? std::wstring(1, std::towupper(w[0])) + L":" : w;
}

std::string outcome(DWORD code) {
    return code == NO_ERROR ? std::string() : network_error_text(code);
}

bool winsock_ready() {
    static const bool ready = [] {
        WSADATA data;
        return WSAStartup(MAKEWORD(2, 2), &data) == 0;
    }();
    return ready;
}

std::string dotted(const sockaddr_in& a) {
    const auto* b = reinterpret_cast<const unsigned char*>(&a.sin_addr);
    return std::to_string(b[0]) + "." + std::to_string(b[1]) + "." + std::to_string(b[2]) + "." +
           std::to_string(b[3]);
}

// The provider of the connection on a local device, from the list of current connections.
std::string provider_of(const std::wstring& device) {
    HANDLE list = nullptr;
    if (WNetOpenEnumW(RESOURCE_CONNECTED, RESOURCETYPE_ANY, 0, nullptr, &list) != NO_ERROR)
        return {};
    std::string provider;
    std::vector<unsigned char> buffer(16384);
    for (bool more = true; more && provider.empty();) {
        DWORD count = static_cast<DWORD>(-1), size = static_cast<DWORD>(buffer.size());
        more = WNetEnumResourceW(list, &count, buffer.data(), &size) == NO_ERROR;
        const auto* rows = reinterpret_cast<const NETRESOURCEW*>(buffer.data());
        for (DWORD i = 0; more && i < count; ++i)
            if (rows[i].lpLocalName && _wcsicmp(rows[i].lpLocalName, device.c_str()) == 0)
                provider = rows[i].lpProvider ? narrow(rows[i].lpProvider) : "";
    }
    WNetCloseEnum(list);
    return provider;
}

class Win32Network final : public Network {
  public:
    std::optional<std::vector<std::string>> user_groups() override { return logon_user_groups(); }
    std::string user_name() override { return logon_user_name(); }
    std::string user_domain() override { return logon_domain(); }
    std::string computer_name() override { return computer_name_as(ComputerNameNetBIOS); }
    std::string computer_domain() override { return computer_name_as(ComputerNameDnsDomain); }
    std::string host_name() override { return computer_name_as(ComputerNameDnsHostname); }

    // The host name's IPv4 addresses as the resolver lists them.
    std::string ip_address() override {
        if (!winsock_ready()) return {};
        ADDRINFOW hints{};
        hints.ai_family = AF_INET;
        ADDRINFOW* list = nullptr;
        if (GetAddrInfoW(widen(host_name()).c_str(), nullptr, &hints, &list) != 0) return {};
        std::vector<InterfaceAddress> addresses;
        for (const ADDRINFOW* a = list; a; a = a->ai_next)
            if (a->ai_family == AF_INET && a->ai_addr)
                addresses.push_back({dotted(*reinterpret_cast<const sockaddr_in*>(a->ai_addr))});
        FreeAddrInfoW(list);
        return pick_ipv4_address(addresses);
    }

    std::optional<std::string> domain_controller(const std::string& domain) override {
        return domain_controller_of(domain);
    }

    // A remembered connection that is not connected now still names its remote resource.
    std::optional<std::string> connected_to(const std::string& local) override {
        const std::wstring device = local_device(local);
        std::wstring remote(MAX_PATH, L'\0');
        DWORD size = static_cast<DWORD>(remote.size());
        DWORD code = WNetGetConnectionW(device.c_str(), remote.data(), &size);
        if (code == ERROR_MORE_DATA) {
            remote.resize(size);
            code = WNetGetConnectionW(device.c_str(), remote.data(), &size);
        }
        if (code != NO_ERROR && code != ERROR_CONNECTION_UNAVAIL) return std::string();
        return narrow(remote.c_str());
    }

    std::optional<std::string> connected_how(const std::string& local) override {
        return provider_of(local_device(local));
    }

    std::optional<std::string> connect(const NetConnection& c) override {
        std::wstring local = local_device(c.local), remote = widen(c.remote);
        const std::wstring user = widen(c.user), password = widen(c.password);
        NETRESOURCEW resource{};
        resource.dwType = c.printer ? RESOURCETYPE_PRINT : RESOURCETYPE_DISK;
        resource.lpLocalName = local.empty() ? nullptr : local.data();
        resource.lpRemoteName = remote.data();
        return outcome(WNetAddConnection2W(
            &resource, c.password.empty() ? nullptr : password.c_str(),
            c.user.empty() ? nullptr : user.c_str(), c.persistent ? CONNECT_UPDATE_PROFILE : 0));
    }

    std::optional<std::string> disconnect(const std::string& name, bool force,
                                          bool forget) override {
        return outcome(WNetCancelConnection2W(local_device(name).c_str(),
                                              forget ? CONNECT_UPDATE_PROFILE : 0, force));
    }

    std::optional<std::string> add_printer(const std::string& printer) override {
        std::wstring name = widen(printer);
        return AddPrinterConnectionW(name.data()) ? std::string() : outcome(GetLastError());
    }

    std::optional<std::string> send_keys(std::span<const KeyStroke> keys) override {
        return send_key_strokes(keys);
    }
};

}  // namespace

std::string network_error_text(DWORD code) {
    if (code == ERROR_EXTENDED_ERROR) {
        DWORD provider_code = 0;
        wchar_t text[512] = {}, provider[256] = {};
        if (WNetGetLastErrorW(&provider_code, text, 512, provider, 256) == NO_ERROR && *text)
            return narrow(text) + " (" + std::to_string(provider_code) + ")";
    }
    return system_error(code).shown();
}

}  // namespace quiller::win32

namespace quiller {

std::unique_ptr<Network> make_network() {
    return std::make_unique<win32::Win32Network>();
}

}  // namespace quiller
