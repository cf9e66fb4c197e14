// The network and accounts service on POSIX: the account and group databases, the host name and
// its domain, the interfaces' addresses and the mount table. Domain controllers, drive and
// printer connections and keystrokes have no meaning here: those operations give nothing.
#include <arpa/inet.h>
#include <grp.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "value/text.hpp"
#include "os/posix/posix_network.hpp"

namespace quiller::posix {
namespace {

std::string gethostname_text() {
    char buffer[256] = {};
    if (::gethostname(buffer, sizeof buffer - 1) != 0) return {};
    return buffer;
}

// The host's full name: gethostname when it holds a domain, else the canonical name the
// resolver gives for it (only when that extends the host name).
std::string full_host_name() {
    const std::string name = gethostname_text();
    if (name.empty() || name.find('.') != std::string::npos) return name;
    addrinfo hints{};
    hints.ai_flags = AI_CANONNAME;
    addrinfo* list = nullptr;
    if (::getaddrinfo(name.c_str(), nullptr, &hints, &list) != 0) return name;
    std::string canonical = list && list->ai_canonname ? list->ai_canonname : "";
    ::freeaddrinfo(list);
    const bool extends = canonical.size() > name.size() + 1 && canonical[name.size()] == '.' &&
                         text::iequals(canonical.substr(0, name.size()), name);
    return extends ? canonical : name;
}

// The NIS domain, when one is set.
std::string nis_domain() {
    char buffer[256] = {};
    if (::getdomainname(buffer, sizeof buffer - 1) != 0) return {};
    const std::string name(buffer);
    return name == "(none)" ? std::string() : name;
}

// The group ids of the current user: the account's own and its memberships in the group
// database, with the process's own groups.
std::optional<std::vector<gid_t>> group_ids() {
    const passwd* pw = ::getpwuid(::getuid());
    if (!pw || !pw->pw_name) return std::nullopt;
    const std::string user = pw->pw_name;
    const gid_t primary = pw->pw_gid;
    std::vector<gid_t> ids(64);
    int count = static_cast<int>(ids.size());
    while (::getgrouplist(user.c_str(), primary, ids.data(), &count) == -1) {
        if (ids.size() >= 65536) return std::nullopt;
        count = std::max<int>(count, static_cast<int>(ids.size()) * 2);
        ids.resize(count);
    }
    ids.resize(count);
    const int extra = ::getgroups(0, nullptr);
    if (extra > 0) {
        std::vector<gid_t> own(extra);
        if (::getgroups(extra, own.data()) == extra) ids.insert(ids.end(), own.begin(), own.end());
    }
    ids.push_back(::getegid());
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
}

InterfaceAddress interface_address(const ifaddrs& ifa) {
    InterfaceAddress a;
    a.ipv4 = ifa.ifa_addr->sa_family == AF_INET;
    a.up = (ifa.ifa_flags & IFF_UP) != 0;
    a.loopback = (ifa.ifa_flags & IFF_LOOPBACK) != 0;
    if (a.ipv4) {
        char text[INET_ADDRSTRLEN] = {};
        const auto* in = reinterpret_cast<const sockaddr_in*>(ifa.ifa_addr);
        if (::inet_ntop(AF_INET, &in->sin_addr, text, sizeof text)) a.address = text;
    }
    return a;
}

class PosixNetwork final : public Network {
  public:
    std::optional<std::vector<std::string>> user_groups() override {
        const auto ids = group_ids();
        if (!ids) return std::nullopt;
        std::vector<std::string> names;
        for (gid_t id : *ids)
            if (const group* g = ::getgrgid(id); g && g->gr_name) names.emplace_back(g->gr_name);
        return names;
    }

    // The account database's name, else the login environment's.
    std::string user_name() override {
        if (const passwd* pw = ::getpwuid(::getuid()); pw && pw->pw_name) return pw->pw_name;
        for (const char* var : {"USER", "LOGNAME"})
            if (const char* v = std::getenv(var); v && *v) return v;
        return {};
    }

    // As on a Windows workstation outside a domain, the computer name stands in for the domain.
    std::string user_domain() override {
        std::string domain = computer_domain();
        return domain.empty() ? computer_name() : domain;
    }

    // The host name in upper case, as Windows shows computer names.
    std::string computer_name() override { return text::to_upper(host_name()); }

    // The resolver is asked once a run.
    std::string computer_domain() override {
        if (!full_name_) full_name_ = full_host_name();
        const std::string& full = *full_name_;
        const std::size_t dot = full.find('.');
        return dot != std::string::npos ? full.substr(dot + 1) : nis_domain();
    }

    // Without the domain, as Windows gives it.
    std::string host_name() override {
        const std::string name = gethostname_text();
        return name.substr(0, name.find('.'));
    }

    std::string ip_address() override {
        ifaddrs* list = nullptr;
        if (::getifaddrs(&list) != 0) return {};
        std::vector<InterfaceAddress> addresses;
        for (const ifaddrs* ifa = list; ifa; ifa = ifa->ifa_next)
            if (ifa->ifa_addr) addresses.push_back(interface_address(*ifa));
        ::freeifaddrs(list);
        return pick_ipv4_address(addresses);
    }

    std::optional<std::string> domain_controller(const std::string&) override { return {}; }

    // What is mounted on the directory, and its file-system type.
    std::optional<std::string> connected_to(const std::string& local) override {
        const MountEntry* m = mount(local);
        return m ? m->source : std::string();
    }
    std::optional<std::string> connected_how(const std::string& local) override {
        const MountEntry* m = mount(local);
        return m ? m->type : std::string();
    }

    std::optional<std::string> connect(const NetConnection&) override { return {}; }
    std::optional<std::string> disconnect(const std::string&, bool, bool) override { return {}; }
    std::optional<std::string> add_printer(const std::string&) override { return {}; }
    std::optional<std::string> send_keys(std::span<const KeyStroke>) override { return {}; }

  private:
    const MountEntry* mount(const std::string& local) {
        if (local.empty()) return nullptr;
        table_ = read_mount_table();
        return find_mount(table_, mount_point_of(local));
    }

    std::vector<MountEntry> table_;
    std::optional<std::string> full_name_;
};

}  // namespace
}  // namespace quiller::posix

namespace quiller {

std::unique_ptr<Network> make_network() {
    return std::make_unique<posix::PosixNetwork>();
}

}  // namespace quiller
