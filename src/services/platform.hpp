// Operating-system services, each behind its own interface. A POSIX and a Win32 implementation
// are chosen at build time by `make_platform()`; tests substitute fakes per service.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

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
    // The platform's message for a system error code.
    virtual std::string error_text(int code) = 0;
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
};

// The implementation for the platform this build targets.
Platform make_platform();

}  // namespace quiller
