// A scratch folder of the test's own, removed with everything in it afterwards (read-only files
// and folders included), with helpers that put files in it and read them back, and an
// environment variable set for one scope. Paths are UTF-8 with the platform's separators, as
// the engine passes them.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#ifdef _WIN32
#include <process.h>
#include <windows.h>
#else
#include <stdlib.h>
#include <unistd.h>
#endif

namespace quiller::testing {

namespace fs = std::filesystem;

inline std::string utf8(const fs::path& p) {
    const std::u8string s = p.u8string();
    return {s.begin(), s.end()};
}
inline fs::path from_utf8(const std::string& s) {
    return fs::path(std::u8string(s.begin(), s.end()));
}

// The variable that names the temporary folder.
#ifdef _WIN32
inline constexpr const char* kTempVariable = "TMP";
#else
inline constexpr const char* kTempVariable = "TMPDIR";
#endif

// Sets (or with nothing, removes) an environment variable until the end of the scope.
class ScopedEnv {
  public:
    ScopedEnv(const char* name, const std::optional<std::string>& value)
        : name_(name), old_(get(name)) {
        set(name, value);
    }
    ~ScopedEnv() { set(name_, old_); }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

  private:
#ifdef _WIN32
    static std::optional<std::string> get(const char* name) {
        char value[32768];
        const DWORD n = GetEnvironmentVariableA(name, value, sizeof value);
        return n > 0 && n < sizeof value ? std::optional<std::string>(value) : std::nullopt;
    }
    static void set(const char* name, const std::optional<std::string>& value) {
        SetEnvironmentVariableA(name, value ? value->c_str() : nullptr);
    }
#else
    static std::optional<std::string> get(const char* name) {
        const char* v = std::getenv(name);
        return v ? std::optional<std::string>(v) : std::nullopt;
    }
    static void set(const char* name, const std::optional<std::string>& value) {
        value ? ::setenv(name, value->c_str(), 1) : ::unsetenv(name);
    }
#endif
    const char* name_;
    std::optional<std::string> old_;
};

class ScratchFolder : public ::testing::Test {
  protected:
    void SetUp() override {
        static int counter = 0;
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
#ifdef _WIN32
        const int pid = ::_getpid();
#else
        const int pid = ::getpid();
#endif
        std::string name = "quiller-" + std::string(test->name()) + "-" + std::to_string(pid) +
                           "-" + std::to_string(++counter);
        for (char& c : name)
            if (c == '/') c = '_';  // parameterised tests' names
        dir = fs::temp_directory_path() / name;
        fs::remove_all(dir);
        ASSERT_TRUE(fs::create_directory(dir));
        fs::permissions(dir, fs::perms::owner_all);
#ifndef _WIN32
        dir = fs::canonical(dir);  // paths come back resolved
#endif
    }
    void TearDown() override {
        std::error_code ec;
        for (const auto& e : fs::recursive_directory_iterator(dir, ec))
            if (!e.is_symlink(ec))
                fs::permissions(e.path(), fs::perms::owner_all, fs::perm_options::add, ec);
        fs::permissions(dir, fs::perms::owner_all, fs::perm_options::add, ec);
        fs::remove_all(dir, ec);
    }
    // A path in the folder; "" is the folder itself with a trailing separator.
    std::string path(const std::string& name) const {
        return utf8((dir / from_utf8(name)).make_preferred());
    }
    // Writes a file, making the folders on its way.
    void write(const std::string& name, const std::string& bytes) const {
        fs::create_directories(from_utf8(path(name)).parent_path());
        std::ofstream(from_utf8(path(name)), std::ios::binary) << bytes;
    }
    std::string content(const std::string& name) const {
        std::ifstream in(from_utf8(path(name)), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    bool exists(const std::string& name) const {
        std::error_code ec;
        return fs::exists(fs::symlink_status(from_utf8(path(name)), ec));
    }
    // How many names the folder holds.
    long count() const {
        return std::distance(fs::directory_iterator(dir), fs::directory_iterator());
    }

    fs::path dir;
};

}  // namespace quiller::testing
