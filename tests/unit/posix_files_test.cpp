// The POSIX file services behind fileopen, fileread, filewrite, replacestringinfile, dirsize,
// diskspace and gettempfile, on real files in a scratch directory: buffer boundaries, file
// kinds that must not hang, read-only files, atomic replacement and failed writes.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "scripted_host.hpp"
#include "services/posix/posix_platform.hpp"

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
        int error = 0;
        auto file = files.open(path(name), OpenMode::Read, error);
        EXPECT_TRUE(file) << error;
        std::vector<std::string> out;
        if (!file) return out;
        for (std::string line; file->read_line(line);) out.push_back(line);
        return out;
    }

    fs::path dir;
    posix::PosixFileSystem files;
};

using Lines = std::vector<std::string>;

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

TEST_F(PosixFiles, EndOfFileStaysTheEnd) {
    write("one.txt", "only");
    int error = 0;
    auto file = files.open(path("one.txt"), OpenMode::Read, error);
    ASSERT_TRUE(file);
    std::string line;
    EXPECT_TRUE(file->read_line(line));
    EXPECT_EQ(line, "only");
    EXPECT_FALSE(file->read_line(line));
    EXPECT_FALSE(file->read_line(line));
    EXPECT_TRUE(file->close());
    EXPECT_FALSE(file->read_line(line));
}

TEST_F(PosixFiles, DirectoriesAndFifosAreRefusedWithoutBlocking) {
    int error = 0;
    EXPECT_FALSE(files.open(dir.string(), OpenMode::Read, error));
    EXPECT_EQ(error, EISDIR);
    EXPECT_FALSE(files.open(dir.string(), OpenMode::Write, error));
    EXPECT_EQ(error, EISDIR);
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(files.open(path("pipe"), OpenMode::Read, error));
    EXPECT_EQ(error, EINVAL);
    EXPECT_FALSE(files.open(path("pipe"), OpenMode::Append, error));
    EXPECT_EQ(error, EINVAL);
    EXPECT_FALSE(files.open(path("missing.txt"), OpenMode::Read, error));
    EXPECT_EQ(error, ENOENT);
    EXPECT_FALSE(files.open("", OpenMode::Write, error));
}

TEST_F(PosixFiles, WriteTruncatesAndAppendAppends) {
    write("w.txt", "old content\n");
    int error = 0;
    auto w = files.open(path("w.txt"), OpenMode::Write, error);
    ASSERT_TRUE(w);
    EXPECT_TRUE(w->write("new\n"));
    EXPECT_EQ(content("w.txt"), "new\n");  // written through at once
    EXPECT_TRUE(w->close());
    auto a = files.open(path("w.txt"), OpenMode::Append, error);
    ASSERT_TRUE(a);
    EXPECT_TRUE(a->write("more\n"));
    a.reset();  // the destructor closes
    EXPECT_EQ(content("w.txt"), "new\nmore\n");
}

// The owner-write bit decides, as getattrib's "R" does, even for root.
TEST_F(PosixFiles, ReadOnlyFilesAreNeitherTruncatedNorReplaced) {
    write("ro.txt", "keep me\n");
    fs::permissions(path("ro.txt"), fs::perms::owner_read | fs::perms::group_read);
    const auto st = files.status(path("ro.txt"));
    ASSERT_TRUE(st);
    EXPECT_TRUE(st->attributes & kAttrReadOnly);
    int error = 0;
    EXPECT_FALSE(files.open(path("ro.txt"), OpenMode::Write, error));
    EXPECT_EQ(error, EACCES);
    EXPECT_FALSE(files.open(path("ro.txt"), OpenMode::Append, error));
    EXPECT_FALSE(files.replace_file(path("ro.txt"), "changed", error));
    EXPECT_EQ(error, EACCES);
    EXPECT_EQ(content("ro.txt"), "keep me\n");
    EXPECT_TRUE(files.open(path("ro.txt"), OpenMode::Read, error));
}

TEST_F(PosixFiles, ReplaceKeepsModeAndLinkAndLeavesNoTemporaryFile) {
    write("target.txt", "before");
    fs::permissions(path("target.txt"),
                    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    fs::create_symlink("target.txt", path("link.txt"));
    int error = 0;
    ASSERT_TRUE(files.replace_file(path("link.txt"), "after", error)) << error;
    EXPECT_TRUE(fs::is_symlink(path("link.txt")));
    EXPECT_EQ(content("target.txt"), "after");
    EXPECT_EQ(fs::status(path("target.txt")).permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 2);
    EXPECT_FALSE(files.replace_file(dir.string(), "x", error));
    EXPECT_EQ(error, EISDIR);
}

TEST_F(PosixFiles, WritingToAFullDeviceFails) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
    int error = 0;
    auto file = files.open("/dev/full", OpenMode::Write, error);
    ASSERT_TRUE(file) << error;
    errno = 0;
    EXPECT_FALSE(file->write("x\n"));
    EXPECT_EQ(errno, ENOSPC);
}

TEST_F(PosixFiles, TemporaryNamesStayInTheTemporaryDirectory) {
    const char* old = std::getenv("TMPDIR");
    const std::string saved = old ? old : "";
    ::setenv("TMPDIR", dir.c_str(), 1);
    const std::string created = files.temp_file_name("../x/yz", true);
    const std::string named = files.temp_file_name("q", false);
    old ? ::setenv("TMPDIR", saved.c_str(), 1) : ::unsetenv("TMPDIR");
    ASSERT_FALSE(created.empty());
    EXPECT_EQ(fs::path(created).parent_path(), dir);
    EXPECT_TRUE(fs::path(created).filename().string().starts_with("..x"));
    EXPECT_TRUE(created.ends_with(".tmp"));
    EXPECT_TRUE(fs::exists(created));
    EXPECT_TRUE(fs::path(named).filename().string().starts_with("q"));
    EXPECT_FALSE(fs::exists(named));
}

TEST_F(PosixFiles, TreeSizeCountsFilesButNoLinks) {
    write("a.bin", std::string(100, 'a'));
    fs::create_directory(path("sub"));
    write("sub/b.bin", std::string(50, 'b'));
    fs::create_symlink("a.bin", path("sub/link.bin"));
    fs::create_directory_symlink(dir, path("sub/loop"));
    EXPECT_EQ(files.tree_size(dir.string()), 150);
    EXPECT_EQ(files.tree_size(path("sub")), 50);
    EXPECT_EQ(files.tree_size(path("a.bin")), std::nullopt);
    EXPECT_EQ(files.tree_size(path("none")), std::nullopt);
    EXPECT_EQ(files.tree_size(""), std::nullopt);
}

TEST_F(PosixFiles, FreeSpaceOfPathsAndDrives) {
    EXPECT_GT(files.free_space(dir.string()).value_or(-1), 0);
    EXPECT_TRUE(files.free_space("C:").has_value());
    EXPECT_TRUE(files.free_space("c:\\").has_value());
    EXPECT_FALSE(files.free_space(path("no/such/dir")).has_value());
}

TEST(PosixMemory, TotalAndAvailable) {
    const MemoryStatus m = posix::PosixEnvironment().memory();
    EXPECT_GT(m.total, 0);
    EXPECT_GT(m.available, 0);
    EXPECT_LE(m.available, m.total);
}

// A file that refuses every write, as a full disk does.
class FullFile final : public OpenFile {
  public:
    bool read_line(std::string&) override { return false; }
    bool write(std::string_view) override {
        errno = ENOSPC;
        return false;
    }
    bool close() override { return true; }
};

// In-memory files for the script and the log; "full.txt" opens as a full disk.
class FullDiskFiles final : public FileSystem {
  public:
    MemoryFiles memory;
    std::optional<FileStatus> status(const std::string& p) override { return memory.status(p); }
    bool any_ordinary_file(const std::string& p) override { return memory.any_ordinary_file(p); }
    std::optional<std::string> read_file(const std::string& p, int& e) override {
        return memory.read_file(p, e);
    }
    bool append_file(const std::string& p, std::string_view b) override {
        return memory.append_file(p, b);
    }
    std::string error_text(int code) override { return posix::PosixFileSystem().error_text(code); }
    std::unique_ptr<OpenFile> open(const std::string&, OpenMode, int&) override {
        return std::make_unique<FullFile>();
    }
    bool replace_file(const std::string& p, std::string_view b, int& e) override {
        return memory.replace_file(p, b, e);
    }
    std::optional<std::int64_t> tree_size(const std::string&) override { return std::nullopt; }
    std::optional<std::int64_t> free_space(const std::string&) override { return std::nullopt; }
    std::string temp_file_name(const std::string&, bool) override { return {}; }
};

TEST(FileStatements, AFailedWriteReportsThePlatformError) {
    ScriptedHost host;
    Platform platform;
    auto files = std::make_unique<FullDiskFiles>();
    MemoryFiles& memory = files->memory;
    platform.files = std::move(files);
    platform.environment = std::make_unique<FixedEnvironment>();
    platform.clock = std::make_unique<FixedClock>();
    memory.files["job.prg"] =
        "sub main\n  set $f$ fileopen full.txt write\n  filewrite $f$ \"text\"\n"
        "  print \"after $f$\"\nendsub\n";
    Engine engine(host, platform);
    EXPECT_EQ(engine.run("job.prg"), 0);
    ASSERT_EQ(host.errors.size(), 1u);
    EXPECT_NE(host.errors[0].text.find("Line 3= filewrite 1 \"text\"\n"
                                       "From Quiller : (DoPrg) Run-time error in 'filewrite'\n"
                                       "From Windows : No space left on device (28)\n"),
              std::string::npos)
        << host.errors[0].text;
    EXPECT_EQ(host.printed, (Lines{"after 1"}));
}

}  // namespace
}  // namespace quiller::testing
