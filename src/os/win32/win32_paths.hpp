// Paths of the file service on Win32, through the wide functions. Every path is made absolute and
// given the "\\?\" prefix, so long paths work everywhere (CreateDirectoryW's shorter limit
// included). Links are symbolic links and junctions (name-surrogate reparse points); other
// reparse points, such as cloud placeholders, are ordinary files and directories.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "os/file_system.hpp"
#include "os/system_error.hpp"
#include "os/win32/win32_handle.hpp"

namespace quiller::win32 {

// The long-path form of a script path: absolute, with the "\\?\" or "\\?\UNC\" prefix.
std::wstring long_path(std::string_view path);
// True for a symbolic link or junction.
bool is_link(DWORD attributes, DWORD reparse_tag);
// A directory's entries without "." and "..".
Result<std::vector<WIN32_FIND_DATAW>> find_all(const std::wstring& dir);
// The reparse tag of a path that is a reparse point (0 when it can't be read).
DWORD reparse_tag(const std::wstring& p);

}  // namespace quiller::win32
