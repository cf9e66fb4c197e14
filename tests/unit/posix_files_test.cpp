// The POSIX file service where it differs from Windows (the shared behaviour is in
// file_system_contract_test.cpp): the error log's file, the user's temporary folder, FIFOs that
// must not hang, modes and links kept on replacement, links in tree sizes, a full device.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "os/posix/posix_platform.hpp"
#include "scratch_folder.hpp"
#include "scripted_host.hpp"

namespace quiller::testing {
namespace {

class PosixFiles : public ScratchFolder {
  protected:
    posix::PosixFileSystem files;
};

// The error log: created 0600; a link or a FIFO at its name is refused at once, never written
// through and never waited on.
TEST_F(PosixFiles, PrivateAppendRefusesLinksAndFifos) {
    ASSERT_TRUE(files.append_private(path("log.txt"), "one\n"));
    EXPECT_EQ(fs::status(path("log.txt")).permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(path("log.txt"), path("link.txt"));
    EXPECT_EQ(files.append_private(path("link.txt"), "two\n").error().code, ELOOP);
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    EXPECT_FALSE(files.append_private(path("fifo"), "three\n"));
    EXPECT_EQ(content("log.txt"), "one\n");
    // Nor does fileopen block on a FIFO.
    EXPECT_EQ(files.open(path("fifo"), OpenMode::Read).error().code, EINVAL);
    EXPECT_EQ(files.open(path("fifo"), OpenMode::Append).error().code, EINVAL);
}

// Without TMPDIR the temporary folder is the user's own, 0700, and not a link.
TEST_F(PosixFiles, TemporaryFolderIsTheUsersOwn) {
    const ScopedEnv no_tmpdir("TMPDIR", std::nullopt);
    const std::string temp = posix::PosixEnvironment().temp_dir();
    EXPECT_EQ(temp, "/tmp/quiller-" + std::to_string(::geteuid()) + "/");
    struct stat st {};
    ASSERT_EQ(::lstat(temp.c_str(), &st), 0);
    EXPECT_TRUE(S_ISDIR(st.st_mode));
    EXPECT_EQ(st.st_mode & 0777, 0700u);
}

TEST_F(PosixFiles, ReplaceKeepsModeAndLink) {
    const auto mode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    write("target.txt", "before");
    fs::permissions(path("target.txt"), mode);
    fs::create_symlink("target.txt", path("link.txt"));
    ASSERT_TRUE(files.replace_file(path("link.txt"), "after"));
    EXPECT_TRUE(fs::is_symlink(path("link.txt")));
    EXPECT_EQ(content("target.txt"), "after");
    EXPECT_EQ(fs::status(path("target.txt")).permissions() & fs::perms::all, mode);
    EXPECT_EQ(count(), 2);
}

// Links are not counted; a missing folder has no disk (Windows answers for the drive).
TEST_F(PosixFiles, TreeSizeAndFreeSpace) {
    write("a.bin", std::string(100, 'a'));
    write("sub/b.bin", std::string(50, 'b'));
    fs::create_symlink("../a.bin", path("sub/link.bin"));
    fs::create_directory_symlink(dir, path("sub/loop"));
    EXPECT_EQ(files.tree_size(utf8(dir)), 150);
    EXPECT_FALSE(files.free_space(path("no/such/dir")).has_value());
}

// A failed write is a warning with the system's text, and the run goes on.
TEST_F(PosixFiles, WritingToAFullDeviceFailsAndIsReported) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
    auto file = files.open("/dev/full", OpenMode::Write);
    ASSERT_TRUE(file);
    EXPECT_EQ((*file)->write("x\n").error().code, ENOSPC);

    write("job.prg",
          "sub main\n  set $f$ fileopen /dev/full write\n  filewrite $f$ \"text\"\n"
          "  print \"after $f$\"\nendsub\n");
    ScriptedHost host;
    Platform platform = make_platform();
    platform.registry = make_memory_registry_store();
    const ScopedEnv temp("TMPDIR", utf8(dir));
    EXPECT_EQ(Engine(host, platform, standard_language()).run(path("job.prg")), 0);
    ASSERT_EQ(host.errors.size(), 1u);
    EXPECT_NE(host.errors[0].text.find("Line 3= filewrite 1 \"text\"\n"
                                       "From Quiller : (DoPrg) Run-time error in 'filewrite'\n"
                                       "From Windows : No space left on device (28)\n"),
              std::string::npos)
        << host.errors[0].text;
    EXPECT_EQ(host.printed, (std::vector<std::string>{"after 1"}));
}

}  // namespace
}  // namespace quiller::testing
