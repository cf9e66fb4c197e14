// The POSIX registry store's database file: where it lives, when it is made, its mode, several
// processes at once, a writer killed half-way, and files that aren't a store.
#ifndef _WIN32
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "scripted_host.hpp"
#include "services/posix/posix_registry.hpp"
#include "services/registry_values.hpp"

namespace quiller {
namespace {

namespace fs = std::filesystem;

class RegistrySqlite : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = fs::temp_directory_path() / "quiller-reg-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        dir = pattern;
        db = (dir / "sub" / "registry.db").string();
    }
    void TearDown() override {
        std::error_code ec;
        fs::remove_all(dir, ec);
    }
    static RegistryKeyRef key(std::string_view subkey) {
        return {{}, RegistryRoot::CurrentUser, subkey};
    }
    static int write(RegistryStore& s, std::string_view subkey, std::string_view name,
                     std::string_view text) {
        RegistryStatus st = s.create_key(key(subkey));
        if (st.ok()) st = s.set_value(key(subkey), name, data_from_text(text, reg_type::kSz));
        return st.code;
    }
    static std::string read(RegistryStore& s, std::string_view subkey, std::string_view name) {
        RegistryData d;
        const RegistryStatus st = s.read_value(key(subkey), name, d);
        return st.ok() ? text_from_data(d) : "<" + std::to_string(st.code) + ">";
    }
    std::string file_bytes(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    fs::path dir;
    std::string db;
};

TEST_F(RegistrySqlite, OpenedOnFirstUseWithPrivateMode) {
    auto store = posix::make_sqlite_registry_store(db);
    EXPECT_FALSE(fs::exists(db));
    EXPECT_FALSE(fs::exists(dir / "sub"));
    ASSERT_EQ(write(*store, "Software\\Quiller", "LastPrg", "job.prg"), 0);
    struct stat st {};
    ASSERT_EQ(::stat(db.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0600u);
    ASSERT_EQ(::stat((dir / "sub").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0700u);
}

TEST_F(RegistrySqlite, KeepsValuesAcrossOpenings) {
    {
        auto store = posix::make_sqlite_registry_store(db);
        ASSERT_EQ(write(*store, "A\\B", "v", "kept"), 0);
    }
    auto again = posix::make_sqlite_registry_store(db);
    EXPECT_EQ(read(*again, "a\\b", "V"), "kept");
}

TEST_F(RegistrySqlite, FileLocationFromTheEnvironment) {
    const char* saved[] = {std::getenv("QUILLER_REGISTRY"), std::getenv("XDG_DATA_HOME"),
                           std::getenv("HOME")};
    const std::string keep[] = {saved[0] ? saved[0] : "", saved[1] ? saved[1] : "",
                                saved[2] ? saved[2] : ""};
    ::setenv("QUILLER_REGISTRY", "/x/r.db", 1);
    ::setenv("XDG_DATA_HOME", "/data", 1);
    ::setenv("HOME", "/home/ada", 1);
    EXPECT_EQ(posix::registry_file_path(), "/x/r.db");
    ::unsetenv("QUILLER_REGISTRY");
    EXPECT_EQ(posix::registry_file_path(), "/data/quiller/registry.db");
    ::setenv("XDG_DATA_HOME", "relative", 1);  // not absolute: ignored
    EXPECT_EQ(posix::registry_file_path(), "/home/ada/.local/share/quiller/registry.db");
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(posix::registry_file_path(), "/home/ada/.local/share/quiller/registry.db");
    const char* names[] = {"QUILLER_REGISTRY", "XDG_DATA_HOME", "HOME"};
    for (int i = 0; i < 3; ++i) {
        if (saved[i])
            ::setenv(names[i], keep[i].c_str(), 1);
        else
            ::unsetenv(names[i]);
    }
}

TEST_F(RegistrySqlite, SeveralProcessesLoseNothing) {
    constexpr int kProcesses = 4;
    constexpr int kWrites = 250;
    for (int p = 0; p < kProcesses; ++p) {
        if (::fork() == 0) {
            auto store = posix::make_sqlite_registry_store(db);
            int failures = 0;
            for (int i = 0; i < kWrites; ++i) {
                const std::string n = std::to_string(p) + "-" + std::to_string(i);
                const int code = write(*store, "Shared\\P" + std::to_string(i % 3), n, n);
                if (code) fprintf(stderr, "%d %s\n", code, store->error_text(code).c_str());
                failures += code != 0;
            }
            ::_exit(failures == 0 ? 0 : 1);
        }
    }
    for (int p = 0; p < kProcesses; ++p) {
        int status = 0;
        ::wait(&status);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    auto store = posix::make_sqlite_registry_store(db);
    int found = 0;
    for (int p = 0; p < kProcesses; ++p)
        for (int i = 0; i < kWrites; ++i) {
            const std::string n = std::to_string(p) + "-" + std::to_string(i);
            found += read(*store, "Shared\\P" + std::to_string(i % 3), n) == n;
        }
    EXPECT_EQ(found, kProcesses * kWrites);
}

TEST_F(RegistrySqlite, WaitsForAnotherWriter) {
    {
        auto store = posix::make_sqlite_registry_store(db);
        ASSERT_EQ(write(*store, "K", "before", "1"), 0);
    }
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        auto store = posix::make_sqlite_registry_store(db);
        store->begin_batch();  // holds the write lock
        write(*store, "K", "child", "1");
        (void)!::write(ready[1], "x", 1);
        ::usleep(700 * 1000);
        ::_exit(store->end_batch() == 0 ? 0 : 1);
    }
    char c = 0;
    ASSERT_EQ(::read(ready[0], &c, 1), 1);
    auto store = posix::make_sqlite_registry_store(db);
    EXPECT_EQ(write(*store, "K", "parent", "1"), 0);  // waits for the child's commit
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(read(*store, "K", "child"), "1");
    EXPECT_EQ(read(*store, "K", "parent"), "1");
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST_F(RegistrySqlite, WriterKilledHalfWay) {
    {
        auto store = posix::make_sqlite_registry_store(db);
        ASSERT_EQ(write(*store, "K", "committed", "yes"), 0);
    }
    const pid_t child = ::fork();
    if (child == 0) {
        auto store = posix::make_sqlite_registry_store(db);
        store->begin_batch();
        for (int i = 0;; ++i) write(*store, "K\\Batch", "v" + std::to_string(i), "x");
    }
    ::usleep(300 * 1000);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    auto store = posix::make_sqlite_registry_store(db);
    EXPECT_EQ(read(*store, "K", "committed"), "yes");
    EXPECT_EQ(store->open_key(key("K\\Batch")).code, reg_error::kFileNotFound);
    EXPECT_EQ(write(*store, "K", "after", "1"), 0);
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(db.c_str(), &handle), SQLITE_OK);
    sqlite3_stmt* s = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(handle, "PRAGMA integrity_check", -1, &s, nullptr), SQLITE_OK);
    ASSERT_EQ(sqlite3_step(s), SQLITE_ROW);
    EXPECT_STREQ(reinterpret_cast<const char*>(sqlite3_column_text(s, 0)), "ok");
    sqlite3_finalize(s);
    sqlite3_close(handle);
}

TEST_F(RegistrySqlite, CorruptFileIsReportedAndLeftAlone) {
    fs::create_directories(dir / "sub");
    const std::string garbage(8192, '\x5a');
    std::ofstream(db, std::ios::binary) << garbage;
    auto store = posix::make_sqlite_registry_store(db);
    const RegistryStatus s = store->create_key(key("K"));
    EXPECT_EQ(s.code, reg_error::kCorrupt);
    EXPECT_EQ(s.step, RegistryStep::Open);
    const std::string text = store->error_text(s.code);
    EXPECT_NE(text.find(db), std::string::npos) << text;
    EXPECT_TRUE(text.ends_with("(1015)")) << text;
    EXPECT_EQ(read(*store, "K", "v"), "<1015>");
    EXPECT_TRUE(file_bytes(db) == garbage);
}

TEST_F(RegistrySqlite, ForeignDatabaseIsNotTouched) {
    fs::create_directories(dir / "sub");
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(db.c_str(), &handle), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle, "CREATE TABLE notes(x)", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(handle);
    const std::string before = file_bytes(db);
    auto store = posix::make_sqlite_registry_store(db);
    EXPECT_EQ(store->create_key(key("K")).code, reg_error::kCorrupt);
    EXPECT_NE(store->error_text(reg_error::kCorrupt).find("not a registry store"),
              std::string::npos);
    store.reset();
    EXPECT_TRUE(file_bytes(db) == before);
}

TEST_F(RegistrySqlite, UnwritableDirectory) {
    if (::geteuid() == 0) GTEST_SKIP() << "root writes anywhere";
    fs::create_directories(dir / "locked");
    fs::permissions(dir / "locked", fs::perms::owner_read | fs::perms::owner_exec);
    auto store = posix::make_sqlite_registry_store((dir / "locked" / "r.db").string());
    EXPECT_NE(store->create_key(key("K")).code, 0);
    fs::permissions(dir / "locked", fs::perms::owner_all);
}

// A run over the store file: no file until the script's first registry call.
TEST_F(RegistrySqlite, RunMakesTheFileOnFirstUse) {
    testing::Harness h;
    h.platform.registry = posix::make_sqlite_registry_store(db);
    h.run(
        "sub main\nprint before\n"
        "set $v$ readreg \"HKEY_CURRENT_USER\\Software\\X\" v\nprint after\nendsub\n");
    EXPECT_EQ(h.host.printed, (std::vector<std::string>{"before", "after"}));
    EXPECT_TRUE(fs::exists(db));
    EXPECT_TRUE(h.host.errors.empty());

    testing::Harness unused;
    unused.platform.registry = posix::make_sqlite_registry_store((dir / "other.db").string());
    unused.run("sub main\nprint hello\nendsub\n");
    EXPECT_FALSE(fs::exists(dir / "other.db"));
}

// A run over a file that isn't a store: every call warns, reads give nothing, the file stays.
TEST_F(RegistrySqlite, RunOverACorruptFile) {
    fs::create_directories(dir / "sub");
    const std::string text(4096, 'x');
    std::ofstream(db, std::ios::binary) << text;
    testing::Harness h;
    h.platform.registry = posix::make_sqlite_registry_store(db);
    h.run(
        "sub main\n"
        "writereg \"HKEY_CURRENT_USER\\Software\\X\" v 1\n"
        "set $v$ readreg \"HKEY_CURRENT_USER\\Software\\X\" v\n"
        "print [$v$]\n"
        "if regkeyexists \"HKEY_CURRENT_USER\\Software\\X\"\nprint FAIL\nendif\n"
        "endsub\n");
    EXPECT_EQ(h.host.printed, std::vector<std::string>{"[]"});
    ASSERT_EQ(h.host.errors.size(), 3u);
    const char* expected[] = {"(SetKeyValue) Software\\X Couldn't be opened/created.",
                              "(GetKeyValue) Software\\X Couldn't be opened.",
                              "(RegKeyExists) HKEY_CURRENT_USER\\Software\\X Couldn't be opened."};
    for (int i = 0; i < 3; ++i) {
        EXPECT_NE(h.host.errors[i].text.find(expected[i]), std::string::npos)
            << h.host.errors[i].text;
        EXPECT_NE(h.host.errors[i].text.find("From Windows : The registry store is corrupt: " + db +
                                             ": file is not a database (1015)"),
                  std::string::npos)
            << h.host.errors[i].text;
    }
    EXPECT_TRUE(file_bytes(db) == text);
}

}  // namespace
}  // namespace quiller
#endif
