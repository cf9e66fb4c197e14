// Registry paths as scripts write them: an optional machine prefix ("\\server\"), a root name and
// a subkey path, and the limits that key and value names must keep.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "os/registry_store.hpp"

namespace quiller {

inline constexpr std::size_t kMaxKeyNameChars = 255;
inline constexpr std::size_t kMaxValueNameChars = 16383;

struct RegistryPath {
    std::string machine;    // "\\server", or empty for this machine
    std::string root_name;  // the root as written, upper-cased
    RegistryRoot root = RegistryRoot::None;
    std::string subkey;  // the rest after the root's "\"
    RegistryKeyRef ref() const { return {machine, root, subkey}; }
};

// Splits a path: "\\server\HKEY_LOCAL_MACHINE\Software\X" gives the machine "\\server", the root
// HKEY_LOCAL_MACHINE and the subkey "Software\X". A path starting with two backslashes and no
// further one loses them and names no machine. An unknown root name gives RegistryRoot::None.
RegistryPath parse_registry_path(std::string_view path);

// The root handle of an upper-cased root name.
RegistryRoot registry_root(std::string_view upper_name);

// HKEY_CURRENT_USER and HKEY_CLASSES_ROOT belong to this machine's user and can't be reached on
// another machine.
bool refused_remotely(const RegistryPath& path);

// The names of a subkey path's keys. False (kInvalidParameter) when a name is empty or longer
// than kMaxKeyNameChars characters; one trailing "\" is allowed.
bool split_subkey(std::string_view subkey, std::vector<std::string_view>& names);

// For stores that hold this machine's keys only: the key's names, or the error code for a
// machine prefix (kBadNetPath), an unknown root (kInvalidHandle) or a bad name.
int local_key_names(const RegistryKeyRef& key, std::vector<std::string_view>& names);

}  // namespace quiller
