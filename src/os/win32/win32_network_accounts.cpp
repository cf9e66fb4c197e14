// Accounts and names on Windows: the logon user and domain, the computer's names, the domain
// controller, and the user's groups on the domain controller and on this computer.
#include "os/win32/win32_network.hpp"

#include <dsgetdc.h>
#include <lm.h>
#define SECURITY_WIN32
#include <security.h>

#include "value/text.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

// Frees a buffer of the network management functions on leaving the scope.
class NetBuffer {
  public:
    ~NetBuffer() {
        if (p_) NetApiBufferFree(p_);
    }
    LPBYTE* out() { return &p_; }
    template <class Row>
    const Row* rows() const {
        return reinterpret_cast<const Row*>(p_);
    }

  private:
    LPBYTE p_ = nullptr;
};

// "DOMAIN\user"; empty when the system can't tell.
std::string sam_compatible_name() {
    ULONG n = 0;
    GetUserNameExW(NameSamCompatible, nullptr, &n);
    if (n == 0) return {};
    std::wstring name(n, L'\0');
    if (!GetUserNameExW(NameSamCompatible, name.data(), &n)) return {};
    name.resize(n);
    return narrow(name);
}

// Groups of this computer the user belongs to, also through other groups.
bool add_local_groups(const std::wstring& user, std::vector<std::string>& names) {
    NetBuffer buffer;
    DWORD read = 0, total = 0;
    if (NetUserGetLocalGroups(nullptr, user.c_str(), 0, LG_INCLUDE_INDIRECT, buffer.out(),
                              MAX_PREFERRED_LENGTH, &read, &total) != NERR_Success)
        return false;
    for (DWORD i = 0; i < read; ++i)
        names.push_back(narrow(buffer.rows<LOCALGROUP_USERS_INFO_0>()[i].lgrui0_name));
    return true;
}

// Global groups on `server` (empty: this computer).
bool add_global_groups(const std::wstring& server, const std::wstring& user,
                       std::vector<std::string>& names) {
    NetBuffer buffer;
    DWORD read = 0, total = 0;
    if (NetUserGetGroups(server.empty() ? nullptr : server.c_str(), user.c_str(), 0, buffer.out(),
                         MAX_PREFERRED_LENGTH, &read, &total) != NERR_Success)
        return false;
    for (DWORD i = 0; i < read; ++i)
        names.push_back(narrow(buffer.rows<GROUP_USERS_INFO_0>()[i].grui0_name));
    return true;
}

}  // namespace

std::string computer_name_as(COMPUTER_NAME_FORMAT format) {
    DWORD n = 0;
    GetComputerNameExW(format, nullptr, &n);
    if (n == 0) return {};
    std::wstring name(n, L'\0');
    if (!GetComputerNameExW(format, name.data(), &n)) return {};
    name.resize(n);
    return narrow(name);
}

std::string logon_user_name() {
    wchar_t name[UNLEN + 1] = {};
    DWORD n = UNLEN + 1;
    if (!GetUserNameW(name, &n)) return {};
    return narrow(name);
}

// A local account's domain is the computer itself.
std::string logon_domain() {
    const std::string sam = sam_compatible_name();
    const std::size_t slash = sam.find('\\');
    return slash != std::string::npos ? sam.substr(0, slash)
                                      : computer_name_as(ComputerNameNetBIOS);
}

std::string domain_controller_of(const std::string& domain) {
    const std::wstring name = widen(domain);
    PDOMAIN_CONTROLLER_INFOW info = nullptr;
    if (DsGetDcNameW(nullptr, name.empty() ? nullptr : name.c_str(), nullptr, nullptr,
                     DS_RETURN_FLAT_NAME, &info) != ERROR_SUCCESS)
        return {};
    std::string dc = info->DomainControllerName ? narrow(info->DomainControllerName) : "";
    NetApiBufferFree(info);
    return dc;
}

// A domain user's global groups come from a controller of the user's domain.
std::optional<std::vector<std::string>> logon_user_groups() {
    const std::string user = logon_user_name();
    if (user.empty()) return std::nullopt;
    const std::string sam = sam_compatible_name();
    const std::string domain = logon_domain();
    const bool local = text::iequals(domain, computer_name_as(ComputerNameNetBIOS));
    const std::string dc = local ? std::string() : domain_controller_of(domain);
    std::vector<std::string> names;
    bool any = add_local_groups(widen(sam.empty() ? user : sam), names);
    if (local || !dc.empty()) any = add_global_groups(widen(dc), widen(user), names) || any;
    if (!any) return std::nullopt;
    return names;
}

}  // namespace quiller::win32
