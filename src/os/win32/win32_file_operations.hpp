// The file operations on Win32, through the wide functions. Every path is made absolute and
// given the "\\?\" prefix, so long paths work everywhere (CreateDirectoryW's shorter limit
// included). Links are symbolic links and junctions (name-surrogate reparse points); other
// reparse points, such as cloud placeholders, are ordinary files and directories.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "os/file_operations.hpp"
#include "os/win32/win32_handle.hpp"

namespace quiller::win32 {

int last_error();
// The long-path form of a script path: absolute, with the "\\?\" or "\\?\UNC\" prefix.
std::wstring long_path(std::string_view path);
// True for a symbolic link or junction.
bool is_link(DWORD attributes, DWORD reparse_tag);
// A directory's entries without "." and ".."; nothing with `error` on failure.
std::optional<std::vector<WIN32_FIND_DATAW>> find_all(const std::wstring& dir, int& error);
// The reparse tag of a path that is a reparse point (0 when it can't be read).
DWORD reparse_tag(const std::wstring& p);

class Win32FileOperations final : public FileOperations {
  public:
    std::optional<FileEntry> entry(const std::string& path, int& error) override;
    std::optional<std::vector<FileEntry>> list(const std::string& directory, int& error) override;
    bool not_found(int error) override;
    bool same_file(const std::string& a, const std::string& b) override;
    std::string resolve(const std::string& path) override;
    std::vector<std::string> home_directories() override;

    bool copy_file(const std::string& from, const std::string& to, int& error) override;
    bool remove_file(const std::string& path, int& error) override;
    bool make_directory(const std::string& path, int& error) override;
    bool remove_directory(const std::string& path, int& error) override;
    bool remove_tree(const std::string& path, std::string& failed, int& error) override;
    bool rename(const std::string& from, const std::string& to, int& error) override;
    AttributeResult set_attributes(const std::string& path, std::uint32_t set, std::uint32_t clear,
                                   int& error) override;
};

}  // namespace quiller::win32
