#include "os/registry_path.hpp"

#include "value/text.hpp"

namespace quiller {

RegistryRoot registry_root(std::string_view upper_name) {
    if (upper_name == "HKEY_CURRENT_USER") return RegistryRoot::CurrentUser;
    if (upper_name == "HKEY_CLASSES_ROOT") return RegistryRoot::ClassesRoot;
    if (upper_name == "HKEY_LOCAL_MACHINE") return RegistryRoot::LocalMachine;
    if (upper_name == "HKEY_USERS") return RegistryRoot::Users;
    return RegistryRoot::None;
}

RegistryPath parse_registry_path(std::string_view path) {
    RegistryPath out;
    std::string_view local = path;
    if (path.starts_with("\\\\")) {
        const std::size_t slash = path.find('\\', 2);
        if (slash == std::string_view::npos) {
            local = path.substr(2);
        } else {
            out.machine = path.substr(0, slash);
            local = path.substr(slash + 1);
        }
    }
    const std::size_t slash = local.find('\\');
    out.root_name = text::to_upper(local.substr(0, slash));
    if (slash != std::string_view::npos) out.subkey = local.substr(slash + 1);
    out.root = registry_root(out.root_name);
    return out;
}

bool refused_remotely(const RegistryPath& path) {
    return !path.machine.empty() &&
           (path.root == RegistryRoot::CurrentUser || path.root == RegistryRoot::ClassesRoot);
}

bool split_subkey(std::string_view subkey, std::vector<std::string_view>& names) {
    names.clear();
    if (subkey.ends_with('\\')) subkey.remove_suffix(1);
    if (subkey.empty()) return true;
    for (;;) {
        const std::size_t slash = subkey.find('\\');
        const std::string_view name = subkey.substr(0, slash);
        if (name.empty() || text::char_count(name) > kMaxKeyNameChars) return false;
        names.push_back(name);
        if (slash == std::string_view::npos) return true;
        subkey.remove_prefix(slash + 1);
    }
}

int local_key_names(const RegistryKeyRef& key, std::vector<std::string_view>& names) {
    if (!key.machine.empty()) return reg_error::kBadNetPath;
    if (key.root == RegistryRoot::None) return reg_error::kInvalidHandle;
    return split_subkey(key.subkey, names) ? reg_error::kOk : reg_error::kInvalidParameter;
}

}  // namespace quiller
