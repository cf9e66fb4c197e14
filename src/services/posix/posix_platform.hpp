// The POSIX implementations of the operating-system services.
#pragma once

#include "services/platform.hpp"

namespace quiller::posix {

// "\" separators of script paths become "/".
std::string native_path(std::string_view path);

class PosixFileSystem final : public FileSystem {
  public:
    std::optional<FileStatus> status(const std::string& path) override;
    bool any_ordinary_file(const std::string& pattern) override;
    std::optional<std::string> read_file(const std::string& path, int& error) override;
    bool append_file(const std::string& path, std::string_view bytes) override;
    std::string error_text(int code) override;
};

class PosixEnvironment final : public Environment {
  public:
    std::string get(const std::string& name) override;
    std::string temp_dir() override;
    std::string os_family() override { return {}; }
};

class PosixClock final : public Clock {
  public:
    double now() override;
    double monotonic_seconds() override;
    void sleep_ms(int ms) override;
};

}  // namespace quiller::posix
