// The POSIX network service and its mount table.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "os/network.hpp"

namespace quiller::posix {

// One line of a mount table: what is mounted, where, and the file-system type.
struct MountEntry {
    std::string source;
    std::string target;
    std::string type;
};

// The entries of a mount table in the format of /proc/self/mounts ("\040"-style escapes decoded).
std::vector<MountEntry> parse_mount_table(std::string_view text);

// The entry that is mounted last on `target` (the one in effect), or nullptr.
const MountEntry* find_mount(std::span<const MountEntry> table, std::string_view target);

// The mount table of this system; empty when it can't be read.
std::vector<MountEntry> read_mount_table();

// A path as the mount table writes it: absolute, symbolic links resolved when it exists,
// without a trailing "/".
std::string mount_point_of(std::string_view path);

}  // namespace quiller::posix
