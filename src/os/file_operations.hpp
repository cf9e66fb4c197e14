// Copying, deleting, listing, creating, removing, renaming files and directories, and setting
// their attributes. Each platform gives these primitives; the statements build wildcards, safety
// checks and reports on them once, for every platform (file_operation_*.cpp).
//
// Errors come back as the platform's own codes (errno, GetLastError), for
// FileSystem::error_text.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quiller {

// What a path names. A link (symbolic link, junction) is described by its target, so
// `directory` tells whether it leads to one; `link` tells that the name itself is a link, which
// the operations never descend into.
struct FileEntry {
    std::string name;              // the last component
    bool directory = false;        // a directory, or a link to one
    bool link = false;             // the name itself is a symbolic link or junction
    std::uint32_t attributes = 0;  // FileAttribute bits
    std::int64_t size = 0;
    std::int64_t modified = 0;  // seconds since 1970-01-01 UTC
};

enum class AttributeResult {
    Done,
    Failed,   // nothing or part changed; `error` says why
    NotKept,  // the read-only bit changed, but the file system can't keep the others
};

class FileOperations {
  public:
    virtual ~FileOperations() = default;

    // --- Looking ----------------------------------------------------------------------------
    // The entry `path` names; nothing (with `error`) when it can't be read.
    virtual std::optional<FileEntry> entry(const std::string& path, int& error) = 0;
    // A directory's entries without "." and "..", in no particular order.
    virtual std::optional<std::vector<FileEntry>> list(const std::string& directory,
                                                       int& error) = 0;
    // True when `error` means that the path (or a directory on it) does not exist.
    virtual bool not_found(int error) = 0;
    // True when both paths name one existing file or directory.
    virtual bool same_file(const std::string& a, const std::string& b) = 0;
    // The absolute path with ".", "..", repeated and trailing separators and every link
    // resolved; a part that doesn't exist is appended as written. Empty when it can't be found.
    virtual std::string resolve(const std::string& path) = 0;
    // The user's home directories, resolved.
    virtual std::vector<std::string> home_directories() = 0;

    // --- Changing ---------------------------------------------------------------------------
    // Copies a file's content, times and permissions through a temporary file in the target's
    // directory that is then renamed over `to`, so `to` is either the old or the whole new file.
    virtual bool copy_file(const std::string& from, const std::string& to, int& error) = 0;
    // Removes a file or a link (never a directory).
    virtual bool remove_file(const std::string& path, int& error) = 0;
    // Creates one directory (its parent must exist).
    virtual bool make_directory(const std::string& path, int& error) = 0;
    // Removes an empty directory, or a link to a directory (the link only).
    virtual bool remove_directory(const std::string& path, int& error) = 0;
    // Removes a directory and everything below it, read-only files included. Links are removed,
    // never followed; a link as `path` is removed alone. Goes on after a failure; false with the
    // first path that stayed (`failed`) and its error.
    virtual bool remove_tree(const std::string& path, std::string& failed, int& error) = 0;
    // Renames or moves a file or directory; never replaces an existing `to`.
    virtual bool rename(const std::string& from, const std::string& to, int& error) = 0;
    // Sets and clears attribute bits (read-only, hidden, system, archive, compressed).
    virtual AttributeResult set_attributes(const std::string& path, std::uint32_t set,
                                           std::uint32_t clear, int& error) = 0;
};

// The implementation for the platform this build targets.
std::unique_ptr<FileOperations> make_file_operations();

}  // namespace quiller
