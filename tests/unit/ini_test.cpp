// INI files at the byte level, for what scripts and the case table (cases/ini.tsv: syntax
// corners, prefix rules, exact bytes written) can't show: length limits, junk and huge lines,
// the line reader's threshold, files on disk, writers in several processes and the cache.
#include <gtest/gtest.h>

#include <chrono>
#include <random>
#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "os/ini_profile.hpp"
#include "scratch_folder.hpp"
#include "scripted_host.hpp"

namespace quiller::testing {
namespace {

using namespace std::string_literals;
using ini::EditKind;

std::string read(std::string_view bytes, std::string_view section, std::string_view key,
                 std::string_view fallback = "DEF") {
    return ini::profile_string(ini::parse_profile(bytes), section, key, fallback);
}

// A file of at least `size` bytes: `head`, filler sections, then `tail`.
std::string large_file(std::string_view head, std::string_view tail, std::size_t size = 70000) {
    std::string s(head);
    for (int i = 0; s.size() + tail.size() < size; ++i)
        s += "[filler" + std::to_string(i) + "]\nsome=value of the filler section\n";
    return s + std::string(tail);
}

std::string random_bytes(std::size_t size, unsigned seed) {
    std::mt19937 rng(seed);
    std::string junk(size, '\0');
    for (char& c : junk) c = static_cast<char>(rng());
    return junk;
}

// --- The profile reader ---------------------------------------------------------------------

TEST(IniProfileReader, NulLengthLimitJunkAndHugeLines) {
    EXPECT_EQ(read("", "s", "k", std::string(300, 'v')), std::string(254, 'v'));  // the default

    (void)read(random_bytes(60000, 7), "s", "k");
    const std::string huge(1 << 20, 'x');
    EXPECT_EQ(read("[s]\nk=" + huge + "\nj=2", "s", "j"), "2");
    EXPECT_EQ(read("[s]\nk=" + huge, "s", "k"), std::string(254, 'x'));
    EXPECT_EQ(read("[" + huge + "]\nk=1", huge, "k"), "1");
    EXPECT_EQ(ini::apply_edit("[s]\nk=" + huge + "\n", {EditKind::SetValue, "s", "k", "v"}, "\n"),
              "[s]\nk=v\n");
}

// --- The line reader ------------------------------------------------------------------------

TEST(IniLineReader, ThresholdJunkAndHugeLines) {
    MemoryFiles files;
    FixedClock clock;
    ini::IniFiles cache(files, clock);
    const std::string small = large_file("[s]\nk = \"padded\" \n", "", 63900);
    files.files["small.ini"] = small + std::string(63999 - small.size(), ';');
    files.files["large.ini"] = small + std::string(64000 - small.size(), ';');
    EXPECT_EQ(cache.read("small.ini", "s", "k", "d "), "padded");
    EXPECT_EQ(cache.read("large.ini", "s", "k", "d "), "d ");

    files.files["junk.ini"] = random_bytes(200000, 11);
    EXPECT_EQ(cache.read("junk.ini", "s", "k", "d"), "d");
    files.files["huge.ini"] = "[s]\n" + std::string(1 << 20, 'z') + "\nk=v";
    EXPECT_EQ(cache.read("huge.ini", "s", "k", "d"), "v");
    files.files["nul.ini"] = large_file("[s]\nk=a\0b\n"s, "");
    EXPECT_EQ(cache.read("nul.ini", "s", "k", "d"), "a\0b"s);
}

// --- Files and the cache --------------------------------------------------------------------

class IniRealFiles : public ScratchFolder {
  protected:
    Platform platform = make_platform();
    ini::IniFiles cache{*platform.files, *platform.clock};
};

TEST_F(IniRealFiles, WriteIntoAMissingDirectoryFailsWhileReplacing) {
    ini::WriteFailure failure;
    EXPECT_FALSE(
        cache.write(path("no/dir.ini"), {EditKind::SetValue, "s", "k", "v"}, "\n", failure));
    EXPECT_FALSE(failure.reading);
    EXPECT_NE(failure.error.code, 0);
}

// The writers' lock excludes a second holder, in this process as in any other, until it is
// released; the next writer removes what a dead writer left beside the file.
TEST_F(IniRealFiles, WritersLockExcludesAndStaleTemporariesGo) {
    auto first = lock_file(path("l.ini"), 0);
    ASSERT_TRUE(first);
    EXPECT_FALSE(lock_file(path("l.ini"), 20));
    first->reset();
    EXPECT_TRUE(lock_file(path("l.ini"), 0));

    write(".l.ini.quiller-tmp-99999-0", "half");
    ini::WriteFailure failure;
    ASSERT_TRUE(cache.write(path("l.ini"), {EditKind::SetValue, "s", "k", "v"}, "\n", failure));
    EXPECT_FALSE(exists(".l.ini.quiller-tmp-99999-0"));
    EXPECT_EQ(cache.read(path("l.ini"), "s", "k", "d"), "v");
}

#ifndef _WIN32
// Writer processes of distinct keys to one file lose nothing.
TEST_F(IniRealFiles, ConcurrentWriterProcessesKeepEveryKey) {
    constexpr int kWriters = 4, kKeys = 150;
    std::vector<pid_t> children;
    for (int w = 0; w < kWriters; ++w) {
        const pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            bool ok = true;
            for (int k = 0; k < kKeys; ++k) {
                const std::string key = "w" + std::to_string(w) + "k" + std::to_string(k);
                ini::WriteFailure failure;
                ok &= cache.write(path("shared.ini"), {EditKind::SetValue, "s", key, "v"}, "\n",
                                  failure);
            }
            ::_exit(ok ? 0 : 1);
        }
        children.push_back(pid);
    }
    for (const pid_t pid : children) {
        int status = 0;
        ::waitpid(pid, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    EXPECT_EQ(ini::section_entries(content("shared.ini"), "s").size(),
              std::size_t{kWriters * kKeys});
}
#endif

// A change of equal size within the same second as the last read is seen.
TEST_F(IniRealFiles, FreshFileChangedWithinTheSameSecondIsReread) {
    write("a.ini", "[s]\nk=1\n");
    EXPECT_EQ(cache.read(path("a.ini"), "s", "k", "d"), "1");
    const auto time = fs::last_write_time(path("a.ini"));
    write("a.ini", "[s]\nk=2\n");
    fs::last_write_time(path("a.ini"), time);
    EXPECT_EQ(cache.read(path("a.ini"), "s", "k", "d"), "2");
}

// Reads of many sections of one large file, just written (bytes compared each call) and then
// settled (size and time are enough), must give the values of the right sections.
TEST_F(IniRealFiles, RepeatedReadsOfALargeFileAnswerFromTheCache) {
    std::string big;
    for (int s = 0; s < 1000; ++s) {
        big += "[Section" + std::to_string(s) + "]\n";
        for (int k = 0; k < 9; ++k)
            big += "Key" + std::to_string(k) + "=" + std::to_string(s * 10 + k) + "\n";
    }
    write("big.ini", big);
    for (const auto age : {std::chrono::hours(0), std::chrono::hours(1)}) {
        fs::last_write_time(path("big.ini"), fs::file_time_type::clock::now() - age);
        for (int s = 999; s > 0; s -= 37)
            EXPECT_EQ(cache.read(path("big.ini"), "SECTION" + std::to_string(s), "key3", "d"),
                      std::to_string(s * 10 + 3));
    }
}

}  // namespace
}  // namespace quiller::testing
