// The POSIX file services behind fileopen, fileread, filewrite, replacestringinfile, dirsize,
// diskspace and gettempfile, on real files in a scratch directory: buffer boundaries, file
// kinds that must not hang, read-only files, atomic replacement and failed writes (the plain
// behaviour of the functions is in tests/scripts/fn_files*.prg).
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "scripted_host.hpp"
#include "os/posix/posix_platform.hpp"

namespace quiller::testing {
namespace {

namespace fs = std::filesystem;

class PosixFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = fs::temp_directory_path() / "quiller-files-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        dir = pattern;
    }
    void TearDown() override {
        std::error_code ec;
        fs::permissions(dir, fs::perms::owner_all, fs::perm_options::add, ec);
        fs::remove_all(dir, ec);
    }
    std::string path(const std::string& name) const { return (dir / name).string(); }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
    }
    std::string content(const std::string& name) const {
        std::ifstream in(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    std::vector<std::string> lines(const std::string& name) {
        auto file = files.open(path(name), OpenMode::Read);
        EXPECT_TRUE(file);
        std::vector<std::string> out;
        if (!file) return out;
        for (std::string line; (*file)->read_line(line);) out.push_back(line);
        return out;
    }

    // Runs `f` with TMPDIR set to the scratch directory.
    template <typename F>
    void with_tmpdir(F f) {
        const char* old = std::getenv("TMPDIR");
        const std::string saved = old ? old : "";
        ::setenv("TMPDIR", dir.c_str(), 1);
        f();
        old ? ::setenv("TMPDIR", saved.c_str(), 1) : ::unsetenv("TMPDIR");
    }

    fs::path dir;
    posix::PosixFileSystem files;
};

using Lines = std::vector<std::string>;

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
}

// Without TMPDIR the temporary folder is the user's own, 0700, and not a link.
TEST_F(PosixFiles, TemporaryFolderIsTheUsersOwn) {
    const char* old = std::getenv("TMPDIR");
    const std::string saved = old ? old : "";
    ::unsetenv("TMPDIR");
    const std::string temp = posix::PosixEnvironment().temp_dir();
    if (old) ::setenv("TMPDIR", saved.c_str(), 1);
    EXPECT_EQ(temp, "/tmp/quiller-" + std::to_string(::geteuid()) + "/");
    struct stat st {};
    ASSERT_EQ(::lstat(temp.c_str(), &st), 0);
    EXPECT_TRUE(S_ISDIR(st.st_mode));
    EXPECT_EQ(st.st_mode & 0777, 0700u);
}

TEST_F(PosixFiles, LineEndsSplitAcrossReads) {
    const std::size_t buffer = 128 * 1024;
    const std::string a(buffer - 1, 'a');
    write("split.txt", a + "\r\nb\r");  // CR last in the first read, LF first in the next
    EXPECT_EQ(lines("split.txt"), (Lines{a, "b"}));
    write("lone.txt", a + "\rc");  // a lone CR at the end of the first read
    EXPECT_EQ(lines("lone.txt"), (Lines{a, "c"}));
    write("long.txt", std::string(3 * buffer + 7, 'x') + "\n\nz");
    EXPECT_EQ(lines("long.txt"), (Lines{std::string(3 * buffer + 7, 'x'), "", "z"}));
}

// Directories and FIFOs are refused without blocking; the read-only bit (owner write, as
// getattrib's "R") refuses writing and replacing even for root.
TEST_F(PosixFiles, FileKindsAndReadOnlyFilesAreRefused) {
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    write("ro.txt", "keep me\n");
    fs::permissions(path("ro.txt"), fs::perms::owner_read | fs::perms::group_read);
    const struct {
        std::string path;
        OpenMode mode;
        int error;
    } cases[] = {
        {dir.string(), OpenMode::Read, EISDIR},        {dir.string(), OpenMode::Write, EISDIR},
        {path("pipe"), OpenMode::Read, EINVAL},        {path("pipe"), OpenMode::Append, EINVAL},
        {path("missing.txt"), OpenMode::Read, ENOENT}, {path("ro.txt"), OpenMode::Write, EACCES},
        {path("ro.txt"), OpenMode::Append, EACCES},
    };
    for (const auto& c : cases) {
        const auto opened = files.open(c.path, c.mode);
        ASSERT_FALSE(opened) << c.path;
        EXPECT_EQ(opened.error().code, c.error) << c.path;
    }
    EXPECT_FALSE(files.open("", OpenMode::Write));
    EXPECT_TRUE(files.status(path("ro.txt"))->attributes & kAttrReadOnly);
    EXPECT_EQ(files.replace_file(path("ro.txt"), "changed").error().code, EACCES);
    EXPECT_EQ(content("ro.txt"), "keep me\n");
    EXPECT_TRUE(files.open(path("ro.txt"), OpenMode::Read));
}

TEST_F(PosixFiles, ReplaceKeepsModeAndLinkAndLeavesNoTemporaryFile) {
    const auto mode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    write("target.txt", "before");
    fs::permissions(path("target.txt"), mode);
    fs::create_symlink("target.txt", path("link.txt"));
    ASSERT_TRUE(files.replace_file(path("link.txt"), "after"));
    EXPECT_TRUE(fs::is_symlink(path("link.txt")));
    EXPECT_EQ(content("target.txt"), "after");
    EXPECT_EQ(fs::status(path("target.txt")).permissions() & fs::perms::all, mode);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 2);
    EXPECT_EQ(files.replace_file(dir.string(), "x").error().code, EISDIR);
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
    with_tmpdir([&] { EXPECT_EQ(Engine(host, platform, standard_language()).run(path("job.prg")), 0); });
    ASSERT_EQ(host.errors.size(), 1u);
    EXPECT_NE(host.errors[0].text.find("Line 3= filewrite 1 \"text\"\n"
                                       "From Quiller : (DoPrg) Run-time error in 'filewrite'\n"
                                       "From Windows : No space left on device (28)\n"),
              std::string::npos)
        << host.errors[0].text;
    EXPECT_EQ(host.printed, (Lines{"after 1"}));
}

TEST_F(PosixFiles, TemporaryNamesStayInTheTemporaryDirectory) {
    std::string created, named;
    with_tmpdir([&] {
        created = files.temp_file_name("../x/yz", true);
        named = files.temp_file_name("q", false);
    });
    ASSERT_FALSE(created.empty());
    EXPECT_EQ(fs::path(created).parent_path(), dir);
    EXPECT_TRUE(fs::path(created).filename().string().starts_with("..x"));
    EXPECT_TRUE(created.ends_with(".tmp"));
    EXPECT_TRUE(fs::exists(created));
    EXPECT_TRUE(fs::path(named).filename().string().starts_with("q"));
    EXPECT_FALSE(fs::exists(named));
}

TEST_F(PosixFiles, TreeSizeFreeSpaceAndMemory) {
    write("a.bin", std::string(100, 'a'));
    fs::create_directory(path("sub"));
    write("sub/b.bin", std::string(50, 'b'));
    fs::create_symlink("a.bin", path("sub/link.bin"));  // links are not counted
    fs::create_directory_symlink(dir, path("sub/loop"));
    EXPECT_EQ(files.tree_size(dir.string()), 150);
    EXPECT_EQ(files.tree_size(path("sub")), 50);
    EXPECT_EQ(files.tree_size(""), std::nullopt);  // missing folders and files: fn_files.prg

    EXPECT_GT(files.free_space(dir.string()).value_or(-1), 0);
    EXPECT_TRUE(files.free_space("C:").has_value());
    EXPECT_TRUE(files.free_space("c:\\").has_value());
    EXPECT_FALSE(files.free_space(path("no/such/dir")).has_value());

    const MemoryStatus m = posix::PosixEnvironment().memory();
    EXPECT_GT(m.available, 0);
    EXPECT_LE(m.available, m.total);
}

}  // namespace
}  // namespace quiller::testing
