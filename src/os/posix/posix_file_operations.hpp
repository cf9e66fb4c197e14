// The file operations on POSIX. Windows attributes follow the mode bits and the name (see
// posix_files.cpp); hidden, system, archive and compressed can also be kept in the extended
// attribute "user.DOSATTRIB", as the text of the attribute word ("0x22"), where the file system
// supports extended attributes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "os/file_operations.hpp"

namespace quiller::posix {

// The attribute bits that user.DOSATTRIB keeps.
std::uint32_t dos_attribute_mask();

// The H S A C bits kept in a file's user.DOSATTRIB, or nothing when it has none we can read.
std::optional<std::uint32_t> read_dos_attributes(const std::string& native_path);

// `attributes` (from the mode and the name) with the kept bits merged in: S, A and C come from
// the extended attribute when there is one; H is set by it or by a leading ".".
std::uint32_t with_dos_attributes(const std::string& native_path, std::uint32_t attributes);

class PosixFileOperations final : public FileOperations {
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

}  // namespace quiller::posix
