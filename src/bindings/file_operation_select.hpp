// What a path argument names: one entry, or the entries its wildcards match; and whether a
// directory may be removed or renamed at all.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bindings/file_operation_report.hpp"
#include "os/file_system.hpp"

namespace quiller::fileops {

struct Match {
    std::string path;  // the directory as written, joined with the entry's name
    FileEntry entry;
};

struct Selection {
    bool wildcard = false;       // the last component holds "*" or "?"
    std::vector<Match> matches;  // in case-blind name order
    Status error;                // why the path or its directory couldn't be read
};

// Without wildcards: the entry the path names (none when it can't be read). With wildcards in
// the last component: the matching entries of its directory. Trailing separators don't count.
Selection select(FileSystem& ops, std::string_view path);

// Why a directory must be neither removed nor renamed: a root (of the file system, a drive or a
// share), the user's home directory, a directory that holds it, or one whose place can't be
// made out. Links and ".." are resolved first. Empty when it may be.
std::string protected_reason(FileSystem& ops, std::string_view path);

// The problem of a path that couldn't be read: "'P' not found", or "Couldn't read 'P'" when
// the error says something else (such as a permission).
void add_unreadable(Problems& problems, std::string_view path, const Status& error);

}  // namespace quiller::fileops
