// The POSIX implementations of the operating-system services.
#pragma once

#include "os/platform.hpp"
#include "os/posix/posix_raw_file.hpp"

namespace quiller::posix {

// "\" separators of script paths become "/".
std::string native_path(std::string_view path);

class PosixFileSystem : public FileSystem {
  public:
    Result<FileEntry> status(const std::string& path) override;
    Result<FileEntry> entry(const std::string& path) override;
    Result<std::vector<FileEntry>> list(const std::string& directory) override;
    bool any_ordinary_file(const std::string& pattern) override;
    bool same_file(const std::string& a, const std::string& b) override;
    std::string resolve(const std::string& path) override;
    std::vector<std::string> home_directories() override;
    std::optional<std::int64_t> tree_size(const std::string& directory) override;
    std::optional<std::int64_t> free_space(const std::string& path) override;

    Result<std::string> read_file(const std::string& path) override;
    Status append_file(const std::string& path, std::string_view bytes) override;
    Status append_private(const std::string& path, std::string_view bytes) override;
    Result<std::unique_ptr<FileLock>> lock_for_update(const std::string& path) override;
    Result<std::unique_ptr<OpenFile>> open(const std::string& path, OpenMode mode) override;
    Status replace_file(const std::string& path, std::string_view bytes) override;
    Result<std::unique_ptr<ReplacementFile>> begin_replace(const std::string& path) override;
    Status copy_file(const std::string& from, const std::string& to,
                     const CopyControl& control) override;
    std::string temp_file_name(const std::string& prefix, bool create) override;

    Status remove_file(const std::string& path) override;
    Status make_directory(const std::string& path) override;
    Status remove_directory(const std::string& path) override;
    Status remove_tree(const std::string& path, std::string& failed) override;
    Status rename(const std::string& from, const std::string& to) override;
    Result<AttributeOutcome> set_attributes(const std::string& path, std::uint32_t set,
                                            std::uint32_t clear) override;

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
    std::int64_t utc_seconds() override;
    void sleep_ms(int ms) override;
};

}  // namespace quiller::posix
