// Operating-system services, each behind its own interface. A POSIX and a Win32 implementation
// are chosen at build time by `make_platform()`; tests substitute fakes per service.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "os/atomic_replace.hpp"
#include "os/file_lock.hpp"
#include "os/file_operations.hpp"
#include "os/network.hpp"
#include "os/processes.hpp"
#include "os/registry_store.hpp"
#include "value/value.hpp"

namespace quiller {

// File attribute bits as Windows reports them.
enum FileAttribute : std::uint32_t {
    kAttrReadOnly = 1,
    kAttrHidden = 2,
    kAttrSystem = 4,
    kAttrDirectory = 16,
    kAttrArchive = 32,
    kAttrCompressed = 2048,
};

struct FileStatus {
    std::uint32_t attributes = 0;
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

class FileSystem {
  public:
    virtual ~FileSystem() = default;
    // Attributes, size and modification time; nothing when the path can't be read.
    virtual std::optional<FileStatus> status(const std::string& path) = 0;
    // True when a listing of `pattern` ("*" and "?" allowed in the last component) finds at least
    // one ordinary file (not hidden, not system, not a directory).
    virtual bool any_ordinary_file(const std::string& pattern) = 0;
    // The whole file's bytes; nothing when it can't be opened or read (errno-style code in
    // `error`).
    virtual std::optional<std::string> read_file(const std::string& path, int& error) = 0;
    // Appends bytes to a file, creating it; false on failure.
    virtual bool append_file(const std::string& path, std::string_view bytes) = 0;
    // Appends bytes to a file of the user's own (the error log): created readable by the user
    // alone, never opened through a link or blocking on a FIFO; anything but a regular file the
    // user owns is refused. False on failure (code in `error`).
    virtual bool append_private(const std::string& path, std::string_view bytes, int& error) = 0;
    // Takes the writers' lock of a shared file that is about to be read, changed and replaced
    // (os/file_lock.hpp), then removes the temporary files that writers who died left beside
    // it. Nothing on failure (code in `error`).
    virtual std::unique_ptr<FileLock> lock_for_update(const std::string& path, int& error) = 0;
    // The platform's message for a system error code, as "text (code)".
    virtual std::string error_text(int code) = 0;

    // Opens a file for `fileopen`; nothing on failure (code in `error`).
    virtual std::unique_ptr<OpenFile> open(const std::string& path, OpenMode mode, int& error) = 0;
    // Replaces a file's content through a temporary file in the same directory and an atomic
    // rename, so a crash never leaves a half-written file. False on failure (code in `error`).
    virtual bool replace_file(const std::string& path, std::string_view bytes, int& error) = 0;
    // Starts writing a file anew through a temporary file beside it, renamed over the file on
    // commit (a link is followed, so the link stays).
    virtual Result<std::unique_ptr<ReplacementFile>> begin_replace(const std::string& path) = 0;
    // Copies a regular file with its modification time and attributes through a temporary file
    // in the target's folder, reporting progress and asking whether to stop between blocks.
    virtual Status copy_file(const std::string& from, const std::string& to,
                             const CopyControl& control) = 0;
    // Total bytes of the files of a directory tree; nothing when it can't be listed.
    virtual std::optional<std::int64_t> tree_size(const std::string& directory) = 0;
    // Free bytes on the disk that holds `path` (a drive such as "C:" or any path on it).
    virtual std::optional<std::int64_t> free_space(const std::string& path) = 0;
    // A new temporary file name in the temporary directory, made from `prefix` as the
    // platform's temporary-file naming does ("pre" + unique hex digits + ".tmp"); the file is
    // created when `create` is set. Empty on failure.
    virtual std::string temp_file_name(const std::string& prefix, bool create) = 0;
};

// Physical memory, in bytes.
struct MemoryStatus {
    std::int64_t total = 0;
    std::int64_t available = 0;
};

// The regional conventions numbers and dates follow, with texts of their own. The program
// hands them to the value layer at start-up (value::set_conventions(settings.view())).
struct RegionalSettings {
    RegionalSettings() : RegionalSettings(value::NumberConventions{}) {}
    explicit RegionalSettings(const value::NumberConventions& c)
        : decimal(c.decimal),
          thousands(c.thousands),
          currency(c.currency),
          currency_format(c.currency_format),
          short_date(c.short_date),
          long_time(c.long_time),
          am(c.am),
          pm(c.pm) {}
    value::NumberConventions view() const {
        return {decimal, thousands, currency, currency_format, short_date, long_time, am, pm};
    }

    std::string decimal, thousands, currency, currency_format, short_date, long_time, am, pm;
};

class Environment {
  public:
    virtual ~Environment() = default;
    // The value of an environment variable; empty when it is not set.
    virtual std::string get(const std::string& name) = 0;
    // The temporary directory, with its trailing separator.
    virtual std::string temp_dir() = 0;
    // The operating-system family: "Windows95", "Windows NT", or empty.
    virtual std::string os_family() = 0;
    virtual MemoryStatus memory() = 0;
    // The user's regional settings; en-US's where the platform keeps none.
    virtual RegionalSettings regional_settings() { return {}; }
};

class Clock {
  public:
    virtual ~Clock() = default;
    // The present local date and time as a day number (days since 30 December 1899).
    virtual double now() = 0;
    // Seconds since an arbitrary start, for seeding and timing.
    virtual double monotonic_seconds() = 0;
    virtual void sleep_ms(int ms) = 0;
};

// The set of services one run uses.
struct Platform {
    std::unique_ptr<FileSystem> files;
    std::unique_ptr<Environment> environment;
    std::unique_ptr<Clock> clock;
    std::unique_ptr<RegistryStore> registry;
    std::unique_ptr<Processes> processes;
    std::unique_ptr<FileOperations> file_operations;
    std::unique_ptr<Network> network;
};

// The services of the platform this build targets.
Platform make_platform();
std::unique_ptr<FileSystem> make_file_system();
std::unique_ptr<Environment> make_environment();
std::unique_ptr<Clock> make_clock();

}  // namespace quiller
