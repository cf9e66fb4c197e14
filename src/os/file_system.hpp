// The one file service: looking at paths, reading and writing files, copying, and changing the
// tree. Each platform gives these primitives (os/posix, os/win32); the statements build
// wildcards, safety checks and reports on them once, for every platform.
//
// Every failure comes back in the result as the system's code and text (SystemError), taken
// when the call failed.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "os/atomic_replace.hpp"
#include "os/file_attributes.hpp"
#include "os/file_lock.hpp"
#include "os/system_error.hpp"

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

// A file a script opened with `fileopen`, read line by line or written.
class OpenFile {
  public:
    virtual ~OpenFile() = default;
    // The next line without its line end (CR LF, LF or CR); false at the end of the file (a
    // read error ends the file too).
    virtual bool read_line(std::string& line) = 0;
    // Writes bytes as they are.
    virtual Status write(std::string_view bytes) = 0;
    // Flushes and closes.
    virtual Status close() = 0;
};

enum class OpenMode { Read, Write, Append };

enum class AttributeResult {
    Done,
    NotKept,  // the read-only bit changed, but the file system can't keep the others
};

// An attribute change that went through, and why the other bits were not kept (NotKept).
struct AttributeOutcome {
    AttributeResult result = AttributeResult::Done;
    SystemError why;
};

class FileSystem {
  public:
    virtual ~FileSystem() = default;

    // --- Looking ----------------------------------------------------------------------------
    // What the path leads to, links followed: a broken link is not found, and a path that ends
    // in a separator must lead to a directory. The size is the one the system gives.
    virtual Result<FileEntry> status(const std::string& path) = 0;
    // The name itself: a link shows as one (described by its target when there is one); a
    // trailing separator doesn't count. A directory's size is 0.
    virtual Result<FileEntry> entry(const std::string& path) = 0;
    // A directory's entries without "." and "..", in no particular order.
    virtual Result<std::vector<FileEntry>> list(const std::string& directory) = 0;
    // True when a listing of `pattern` ("*" and "?" allowed in the last component) finds at least
    // one ordinary file (not hidden, not system, not a directory).
    virtual bool any_ordinary_file(const std::string& pattern) = 0;
    // True when both paths name one existing file or directory.
    virtual bool same_file(const std::string& a, const std::string& b) = 0;
    // The absolute path with ".", "..", repeated and trailing separators and every link
    // resolved; a part that doesn't exist is appended as written. Empty when it can't be found.
    virtual std::string resolve(const std::string& path) = 0;
    // The user's home directories, resolved.
    virtual std::vector<std::string> home_directories() = 0;
    // Total bytes of the files of a directory tree; nothing when it can't be listed.
    virtual std::optional<std::int64_t> tree_size(const std::string& directory) = 0;
    // Free bytes on the disk that holds `path` (a drive such as "C:" or any path on it).
    virtual std::optional<std::int64_t> free_space(const std::string& path) = 0;

    // --- Reading and writing ----------------------------------------------------------------
    // The whole file's bytes.
    virtual Result<std::string> read_file(const std::string& path) = 0;
    // Appends bytes to a file, creating it.
    virtual Status append_file(const std::string& path, std::string_view bytes) = 0;
    // Appends bytes to a file of the user's own (the error log): created readable by the user
    // alone, never opened through a link or blocking on a FIFO; anything but a regular file the
    // user owns is refused.
    virtual Status append_private(const std::string& path, std::string_view bytes) = 0;
    // Takes the writers' lock of a shared file that is about to be read, changed and replaced
    // (os/file_lock.hpp), then removes the temporary files that writers who died left beside it.
    virtual Result<std::unique_ptr<FileLock>> lock_for_update(const std::string& path) = 0;
    // Opens a file for `fileopen`.
    virtual Result<std::unique_ptr<OpenFile>> open(const std::string& path, OpenMode mode) = 0;
    // Replaces a file's content through a temporary file in the same directory and an atomic
    // rename, so a crash never leaves a half-written file (os/atomic_replace.hpp).
    virtual Status replace_file(const std::string& path, std::string_view bytes) = 0;
    // Starts writing a file anew through a temporary file beside it, renamed over the file on
    // commit (a link is followed, so the link stays).
    virtual Result<std::unique_ptr<ReplacementFile>> begin_replace(const std::string& path) = 0;
    // Copies a regular file with its modification time and attributes through a temporary file
    // in the target's folder, reporting progress and asking whether to stop between blocks.
    virtual Status copy_file(const std::string& from, const std::string& to,
                             const CopyControl& control = {}) = 0;
    // A new temporary file name in the temporary directory, made from `prefix` as the
    // platform's temporary-file naming does ("pre" + unique hex digits + ".tmp"); the file is
    // created when `create` is set. Empty on failure.
    virtual std::string temp_file_name(const std::string& prefix, bool create) = 0;

    // --- Changing the tree ------------------------------------------------------------------
    // Removes a file or a link (never a directory).
    virtual Status remove_file(const std::string& path) = 0;
    // Creates one directory (its parent must exist).
    virtual Status make_directory(const std::string& path) = 0;
    // Removes an empty directory, or a link to a directory (the link only).
    virtual Status remove_directory(const std::string& path) = 0;
    // Removes a directory and everything below it, read-only files included. Links are removed,
    // never followed; a link as `path` is removed alone. Goes on after a failure; the first
    // error, with the path that stayed in `failed`.
    virtual Status remove_tree(const std::string& path, std::string& failed) = 0;
    // Renames or moves a file or directory; never replaces an existing `to`.
    virtual Status rename(const std::string& from, const std::string& to) = 0;
    // Sets and clears attribute bits (read-only, hidden, system, archive, compressed).
    virtual Result<AttributeOutcome> set_attributes(const std::string& path, std::uint32_t set,
                                                    std::uint32_t clear) = 0;
};

// The implementation for the platform this build targets.
std::unique_ptr<FileSystem> make_file_system();

}  // namespace quiller
