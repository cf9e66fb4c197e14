// The Win32 implementations of the operating-system services. Paths and texts are UTF-8 in the
// engine; these classes convert them to UTF-16 and call the wide ("W") functions.
#pragma once

#include <string>
#include <string_view>

#include "os/platform.hpp"
#include "os/win32/win32_raw_file.hpp"
#include "value/text.hpp"

namespace quiller::win32 {

// UTF-8 to UTF-16 and back (ill-formed input becomes U+FFFD).
inline std::wstring widen(std::string_view utf8) {
    return text::utf8_to_wide(utf8);
}
inline std::string narrow(std::wstring_view wide) {
    return text::wide_to_utf8(wide);
}
// The absolute form of a path (GetFullPathNameW); the path itself when that fails.
std::wstring full_path(const std::wstring& path);
// The system's message for an error code, without its line end and closing full stop.
std::string system_message(unsigned long code);

// A path for the wide file functions: UTF-16, and when longer than MAX_PATH - 1 characters made
// absolute and given the "\\?\" (or "\\?\UNC\") prefix that lifts the length limit.
std::wstring native_path(std::string_view utf8_path);

class Win32FileSystem final : public FileSystem {
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
    Win32Primitives primitives_;
};

class Win32Environment final : public Environment {
  public:
    std::string get(const std::string& name) override;
    std::string temp_dir() override;
    std::string os_family() override;
    MemoryStatus memory() override;
    RegionalSettings regional_settings() override;
};

class Win32Clock final : public Clock {
  public:
    double now() override;
    double monotonic_seconds() override;
    std::int64_t utc_seconds() override;
    void sleep_ms(int ms) override;
};

}  // namespace quiller::win32
