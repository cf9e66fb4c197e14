// The POSIX implementations of the operating-system services.
#pragma once

#include "os/platform.hpp"
#include "os/posix/posix_raw_file.hpp"

namespace quiller::posix {

// "\" separators of script paths become "/".
std::string native_path(std::string_view path);

class PosixFileSystem final : public FileSystem {
  public:
    std::optional<FileStatus> status(const std::string& path) override;
    bool any_ordinary_file(const std::string& pattern) override;
    std::optional<std::string> read_file(const std::string& path, int& error) override;
    bool append_file(const std::string& path, std::string_view bytes) override;
    bool append_private(const std::string& path, std::string_view bytes, int& error) override;
    std::unique_ptr<FileLock> lock_for_update(const std::string& path, int& error) override;
    std::string error_text(int code) override;
    std::unique_ptr<OpenFile> open(const std::string& path, OpenMode mode, int& error) override;
    bool replace_file(const std::string& path, std::string_view bytes, int& error) override;
    Result<std::unique_ptr<ReplacementFile>> begin_replace(const std::string& path) override;
    Status copy_file(const std::string& from, const std::string& to,
                     const CopyControl& control) override;
    std::optional<std::int64_t> tree_size(const std::string& directory) override;
    std::optional<std::int64_t> free_space(const std::string& path) override;
    std::string temp_file_name(const std::string& prefix, bool create) override;

  private:
    PosixPrimitives primitives_;
};

class PosixEnvironment final : public Environment {
  public:
    std::string get(const std::string& name) override;
    std::string temp_dir() override;
    std::string os_family() override { return {}; }
    MemoryStatus memory() override;

  private:
    std::string temp_dir_;
};

class PosixClock final : public Clock {
  public:
    double now() override;
    double monotonic_seconds() override;
    void sleep_ms(int ms) override;
};

}  // namespace quiller::posix
