// Reads one folder's entries with their status, as fast as the platform allows (the entry type
// from the listing, the status relative to the open folder). Directory scans walk trees with it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "os/system_error.hpp"

namespace quiller {

struct DirectoryEntry {
    enum class Kind : std::uint8_t {
        File,
        Folder,
        FolderLink,  // a link to a folder: recorded as a folder, never entered
        Other,       // a device, pipe or socket
    };
    std::string name;
    Kind kind = Kind::File;
    std::uint32_t attributes = 0;  // Windows attribute bits, the compressed bit removed
    std::int64_t size = 0;         // 0 for folders
    std::int64_t modified = 0;     // seconds since 1970-01-01 UTC
    int error = 0;                 // non-zero: the status couldn't be read (the fields are 0)
};

class DirectoryReader {
  public:
    virtual ~DirectoryReader() = default;
    // Replaces `entries` with the entries of the folder `path`, "." and ".." left out. Returns 0,
    // or the system's error code when the folder can't be opened or read to its end.
    virtual int list(const std::string& path, std::vector<DirectoryEntry>& entries) = 0;
    // True for an error that may go away when the folder is read again (a busy or unreachable
    // network share, no file handles left); false for one that won't (no access, not there).
    virtual bool transient(int error) const = 0;
    // The error, with the system's text, for a code this reader gave.
    virtual SystemError describe(int error) const = 0;
};

std::unique_ptr<DirectoryReader> make_directory_reader();

}  // namespace quiller
