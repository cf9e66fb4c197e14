// The POSIX registry store's database file: where it lives, when it is made, its mode, several
// processes at once, a writer killed half-way, and files that aren't a store.
#ifndef _WIN32
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "os/posix/posix_registry.hpp"
#include "os/registry_values.hpp"
#include "scratch_folder.hpp"
#include "scripted_host.hpp"

namespace quiller {
namespace {

namespace fs = std::filesystem;

class RegistrySqlite : public testing::ScratchFolder {
  protected:
    void SetUp() override {
        ScratchFolder::SetUp();
        db = path("sub/registry.db");
    }
    static RegistryKeyRef key(std::string_view subkey) {
        return {{}, RegistryRoot::CurrentUser, subkey};
    }
    static int write(RegistryStore& s, std::string_view subkey, std::string_view name,
                     std::string_view text) {
        return s.write_value(key(subkey), name, data_from_text(text, reg_type::kSz)).code;
    }
    static std::string read(RegistryStore& s, std::string_view subkey, std::string_view name) {
        RegistryData d;
        return s.read_value(key(subkey), name, d).ok() ? text_from_data(d) : "(none)";
    }
    // Runs SQL on the file itself; the first column of the last row.
    std::string sql(const char* statement) {
        sqlite3* handle = nullptr;
        std::string out;
        EXPECT_EQ(sqlite3_open(db.c_str(), &handle), SQLITE_OK);
        sqlite3_exec(
            handle, statement,
            [](void* o, int, char** v, char**) { return *static_cast<std::string*>(o) = v[0], 0; },
            &out, nullptr);
        sqlite3_close(handle);
        return out;
    }

    std::string db;
};

TEST_F(RegistrySqlite, MadeOnFirstUsePrivateAndKeptAcrossOpenings) {
    {
        auto store = posix::make_sqlite_registry_store(db);
        EXPECT_FALSE(fs::exists(dir / "sub"));
        ASSERT_EQ(write(*store, "A\\B", "v", "kept"), 0);
    }
    EXPECT_EQ(fs::status(db).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(dir / "sub").permissions(), fs::perms::owner_all);
    EXPECT_EQ(read(*posix::make_sqlite_registry_store(db), "a\\b", "V"), "kept");
}

TEST_F(RegistrySqlite, FileLocationFromTheEnvironment) {
    const testing::ScopedEnv home("HOME", "/home/ada"), data("XDG_DATA_HOME", "/data"),
        named("QUILLER_REGISTRY", "/x/r.db");
    EXPECT_EQ(posix::registry_file_path(), "/x/r.db");
    const testing::ScopedEnv unnamed("QUILLER_REGISTRY", std::nullopt);
    EXPECT_EQ(posix::registry_file_path(), "/data/quiller/registry.db");
    const testing::ScopedEnv relative("XDG_DATA_HOME", "relative");  // not absolute: ignored
    EXPECT_EQ(posix::registry_file_path(), "/home/ada/.local/share/quiller/registry.db");
}

// One process holds a batch open while four others start writing: they wait for it and for each
// other, and nothing is lost. Pipes order the steps; the test itself opens no store before forking.
TEST_F(RegistrySqlite, SeveralWritersWaitAndLoseNothing) {
    constexpr int kWriters = 4;
    constexpr int kWrites = 250;
    const auto name = [](int p, int i) { return std::to_string(p) + "-" + std::to_string(i); };
    const auto subkey = [](int i) { return "Shared\\P" + std::to_string(i % 3); };
    int locked[2], ready[2], release[2];
    ASSERT_EQ(::pipe(locked) | ::pipe(ready) | ::pipe(release), 0);
    char c = 0;
    if (::fork() == 0) {
        auto store = posix::make_sqlite_registry_store(db);
        store->begin_batch();
        const bool ok = write(*store, "Shared", "holder", "1") == 0;
        (void)!::write(locked[1], "x", 1);
        (void)!::read(release[0], &c, 1);
        ::_exit(ok && store->end_batch() == 0 ? 0 : 1);
    }
    ASSERT_EQ(::read(locked[0], &c, 1), 1);
    for (int p = 0; p < kWriters; ++p) {
        if (::fork() == 0) {
            auto store = posix::make_sqlite_registry_store(db);
            (void)!::write(ready[1], "x", 1);
            int failures = 0;
            for (int i = 0; i < kWrites; ++i)
                failures += write(*store, subkey(i), name(p, i), name(p, i)) != 0;
            ::_exit(failures == 0 ? 0 : 1);
        }
    }
    for (int p = 0; p < kWriters; ++p) ASSERT_EQ(::read(ready[0], &c, 1), 1);
    (void)!::write(release[1], "x", 1);
    for (int p = 0; p <= kWriters; ++p) {
        int status = 0;
        ::wait(&status);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    for (int fd : {locked[0], locked[1], ready[0], ready[1], release[0], release[1]}) ::close(fd);
    auto store = posix::make_sqlite_registry_store(db);
    int found = read(*store, "Shared", "holder") == "1";
    for (int p = 0; p < kWriters; ++p)
        for (int i = 0; i < kWrites; ++i)
            found += read(*store, subkey(i), name(p, i)) == name(p, i);
    EXPECT_EQ(found, kWriters * kWrites + 1);
}

TEST_F(RegistrySqlite, WriterKilledHalfWayLosesOnlyItsBatch) {
    ASSERT_EQ(write(*posix::make_sqlite_registry_store(db), "K", "committed", "yes"), 0);
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        auto store = posix::make_sqlite_registry_store(db);
        store->begin_batch();
        for (int i = 0;; ++i) {
            write(*store, "K\\Batch", "v" + std::to_string(i), "x");
            if (i == 100) (void)!::write(ready[1], "x", 1);  // well inside the batch
        }
    }
    char c = 0;
    ASSERT_EQ(::read(ready[0], &c, 1), 1);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    for (int fd : ready) ::close(fd);
    auto store = posix::make_sqlite_registry_store(db);
    EXPECT_EQ(read(*store, "K", "committed"), "yes");
    EXPECT_EQ(store->open_key(key("K\\Batch")).code, reg_error::kFileNotFound);
    EXPECT_EQ(write(*store, "K", "after", "1"), 0);
    EXPECT_EQ(sql("PRAGMA integrity_check"), "ok");
}

// A run that makes no registry call makes no file.
TEST_F(RegistrySqlite, RunsWithoutRegistryCallsMakeNoFile) {
    testing::Harness h;
    h.platform.registry = posix::make_sqlite_registry_store(db);
    h.run("sub main\nprint hello\nendsub\n");
    EXPECT_FALSE(fs::exists(db));
}

// Garbage, and a database of some other program: every call warns at the open, reads give
// nothing, the run goes on, and the file is never written to.
TEST_F(RegistrySqlite, FilesThatAreNoStoreAreReportedAndLeftAlone) {
    fs::create_directories(dir / "sub");
    for (const bool foreign : {false, true}) {
        SCOPED_TRACE(foreign ? "foreign database" : "garbage");
        fs::remove(db);
        if (foreign)
            sql("CREATE TABLE notes(x)");
        else
            std::ofstream(db, std::ios::binary) << std::string(8192, '\x5a');
        const std::string before = content("sub/registry.db");
        testing::Harness h;
        h.platform.registry = posix::make_sqlite_registry_store(db);
        h.run(
            "sub main\nwritereg \"HKEY_CURRENT_USER\\X\" v 1\n"
            "set $v$ readreg \"HKEY_CURRENT_USER\\X\" v\nprint [$v$]\nendsub\n");
        EXPECT_EQ(h.host.printed, std::vector<std::string>{"[]"});
        ASSERT_EQ(h.host.errors.size(), 2u);
        EXPECT_NE(h.host.errors[0].text.find("(SetKeyValue) X Couldn't be opened/created."),
                  std::string::npos);
        const std::string reason = foreign ? ": not a registry store" : ": file is not a database";
        for (const auto& e : h.host.errors) {
            EXPECT_NE(e.text.find("From Windows : The registry store is corrupt: " + db + reason),
                      std::string::npos)
                << e.text;
            EXPECT_NE(e.text.find("(1015)"), std::string::npos);
        }
        h.platform.registry.reset();
        EXPECT_TRUE(content("sub/registry.db") == before);
    }
}

}  // namespace
}  // namespace quiller
#endif
