// The file service behind fileopen, fileread, filewrite, replacestringinfile, dirsize,
// diskspace and gettempfile, on real files in a scratch folder, for the platform this build
// targets (the Windows build runs it under Wine): buffer boundaries, writing and appending,
// refused files, replacements and copies (never half a file, nothing left behind, taken
// temporary names passed over, progress and cancel), temporary and non-ASCII names, sizes.
// What one platform alone has is in posix_files_test.cpp and
// tests/win32/unit/win32_files_test.cpp; the plain behaviour of the functions is in
// tests/scripts/fn_files*.prg.
#include <gtest/gtest.h>

#include <cerrno>

#include "os/platform.hpp"
#include "scratch_folder.hpp"

namespace quiller::testing {
namespace {

using Lines = std::vector<std::string>;

// The system's codes for a folder opened as a file, a missing file and a read-only file.
#ifdef _WIN32
constexpr int kIsFolder = 5, kMissing = 2, kReadOnly = 5;  // ERROR_ACCESS_DENIED, _FILE_NOT_FOUND
#else
constexpr int kIsFolder = EISDIR, kMissing = ENOENT, kReadOnly = EACCES;
#endif

class FileSystemContract : public ScratchFolder {
  protected:
    Lines lines(const std::string& name) {
        auto file = files->open(path(name), OpenMode::Read);
        EXPECT_TRUE(file);
        Lines out;
        if (!file) return out;
        for (std::string line; (*file)->read_line(line);) out.push_back(line);
        return out;
    }

    std::unique_ptr<FileSystem> files = make_file_system();
};

TEST_F(FileSystemContract, LineEndsSplitAcrossReads) {
    const std::size_t buffer = 128 * 1024;  // the line reader's
    const std::string a(buffer - 1, 'a');
    write("split.txt", a + "\r\nb\r");  // CR last in the first read, LF first in the next
    EXPECT_EQ(lines("split.txt"), (Lines{a, "b"}));
    write("lone.txt", a + "\rc");  // a lone CR at the end of the first read
    EXPECT_EQ(lines("lone.txt"), (Lines{a, "c"}));
    write("long.txt", std::string(3 * buffer + 7, 'x') + "\n\nz");
    EXPECT_EQ(lines("long.txt"), (Lines{std::string(3 * buffer + 7, 'x'), "", "z"}));
    // The end of the file stays the end, and a closed file reads nothing.
    auto opened = files->open(path("lone.txt"), OpenMode::Read);
    ASSERT_TRUE(opened);
    std::string line;
    while ((*opened)->read_line(line)) {
    }
    EXPECT_FALSE((*opened)->read_line(line));
    EXPECT_TRUE((*opened)->close());
    EXPECT_FALSE((*opened)->read_line(line));
}

TEST_F(FileSystemContract, WriteTruncatesAndAppendAppends) {
    write("w.txt", "old content\n");
    auto w = files->open(path("w.txt"), OpenMode::Write);
    ASSERT_TRUE(w);
    EXPECT_TRUE((*w)->write("new\n"));
    EXPECT_EQ(content("w.txt"), "new\n");  // written through at once
    EXPECT_TRUE((*w)->close());
    auto a = files->open(path("w.txt"), OpenMode::Append);
    ASSERT_TRUE(a);
    EXPECT_TRUE((*a)->write("more\n"));
    a->reset();
    EXPECT_EQ(content("w.txt"), "new\nmore\n");
    EXPECT_TRUE(files->append_file(path("w.txt"), "last"));
    EXPECT_EQ(content("w.txt"), "new\nmore\nlast");
}

// The read-only bit (on POSIX the owner's write bit, as getattrib's "R") refuses writing and
// replacing, even for root.
TEST_F(FileSystemContract, FoldersMissingAndReadOnlyFilesAreRefused) {
    write("ro.txt", "keep me\n");
    fs::permissions(dir / "ro.txt",
                    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    const struct {
        std::string path;
        OpenMode mode;
        int error;
    } cases[] = {
        {utf8(dir), OpenMode::Read, kIsFolder},
        {utf8(dir), OpenMode::Write, kIsFolder},
        {path("missing.txt"), OpenMode::Read, kMissing},
        {path("ro.txt"), OpenMode::Write, kReadOnly},
        {path("ro.txt"), OpenMode::Append, kReadOnly},
    };
    for (const auto& c : cases) {
        const auto opened = files->open(c.path, c.mode);
        ASSERT_FALSE(opened) << c.path;
        EXPECT_EQ(opened.error().code, c.error) << c.path;
    }
    EXPECT_FALSE(files->open("", OpenMode::Write));
    EXPECT_TRUE(files->status(path("ro.txt"))->attributes & kAttrReadOnly);
    EXPECT_EQ(files->replace_file(path("ro.txt"), "changed").error().code, kReadOnly);
    EXPECT_EQ(content("ro.txt"), "keep me\n");
    EXPECT_TRUE(files->open(path("ro.txt"), OpenMode::Read));
}

// A replacement changes nothing before its commit and leaves nothing when abandoned; names that
// other files hold (writers' leftovers) are passed over, never written to.
TEST_F(FileSystemContract, ReplacementsCommitOrLeaveNothingAndPassOverTakenNames) {
    EXPECT_EQ(temp_name_beside("C:\\d\\a.ini", 12, 3), "C:\\d\\.a.ini.quiller-tmp-12-3");
    EXPECT_EQ(temp_name_beside("/d/a.ini", 12, 3), "/d/.a.ini.quiller-tmp-12-3");
    EXPECT_EQ(temp_name_beside("a.ini", 1, 0), ".a.ini.quiller-tmp-1-0");
    write("a.ini", "old");
    std::string temp;
    {
        auto r = files->begin_replace(path("a.ini"));
        ASSERT_TRUE(r);
        ASSERT_TRUE((*r)->write("new"));
        temp = (*r)->temp_path();
        EXPECT_EQ(from_utf8(temp).parent_path(), dir);
        EXPECT_EQ(content("a.ini"), "old");
    }  // abandoned
    EXPECT_EQ(count(), 1);
    const std::size_t dash = temp.rfind('-');
    const unsigned n = std::stoul(temp.substr(dash + 1));
    const std::string stem = utf8(from_utf8(temp.substr(0, dash + 1)).filename());
    const std::string taken[] = {stem + std::to_string(n + 1), stem + std::to_string(n + 2)};
    for (const std::string& name : taken) write(name, "left over");
    ASSERT_TRUE(files->replace_file(path("a.ini"), "new"));
    ASSERT_TRUE(files->replace_file(path("b.ini"), "fresh"));  // nothing to replace
    EXPECT_EQ(content("a.ini"), "new");
    EXPECT_EQ(content("b.ini"), "fresh");
    EXPECT_EQ(count(), 4);
    for (const std::string& name : taken) EXPECT_EQ(content(name), "left over");
    EXPECT_EQ(files->replace_file(utf8(dir), "x").error().code, kIsFolder);
}

// A copy goes in blocks, reporting each; a cancelled copy leaves the target as it was.
TEST_F(FileSystemContract, CopiesReportProgressAndStopWhenCancelled) {
    write("big", std::string(600 * 1024, 'x'));
    write("target", "old");
    std::vector<std::int64_t> seen;
    CopyControl control;
    control.progress = [&](std::int64_t done) { seen.push_back(done); };
    control.cancelled = [&] { return seen.size() == 1; };
    const Status stopped = files->copy_file(path("big"), path("target"), control);
    ASSERT_FALSE(stopped);
    EXPECT_EQ(stopped.error().kind, ErrorKind::Cancelled);
    EXPECT_EQ(content("target"), "old");
    EXPECT_EQ(count(), 2);

    seen.clear();
    control.cancelled = nullptr;
    ASSERT_TRUE(files->copy_file(path("big"), path("target"), control));
    EXPECT_EQ(seen, (std::vector<std::int64_t>{262144, 524288, 614400}));
    EXPECT_EQ(content("target"), content("big"));
    EXPECT_EQ(count(), 2);
    EXPECT_FALSE(files->copy_file(path("big"), path("big")));
    EXPECT_EQ(content("big").size(), 600 * 1024u);
    EXPECT_EQ(files->copy_file(path("none"), path("x")).error().kind, ErrorKind::NotFound);
}

TEST_F(FileSystemContract, TemporaryNamesStayInTheTemporaryFolder) {
    std::string created, named;
    {
        const ScopedEnv temp(kTempVariable, path(""));
        created = files->temp_file_name("..\\x/yz", true);
        named = files->temp_file_name("q", false);
    }
    ASSERT_FALSE(created.empty());
    EXPECT_EQ(from_utf8(created).parent_path(), dir);
    EXPECT_TRUE(from_utf8(created).filename().string().starts_with("..x"));
    EXPECT_TRUE(created.ends_with(".tmp"));
    EXPECT_TRUE(fs::exists(from_utf8(created)));
    EXPECT_TRUE(from_utf8(named).filename().string().starts_with("q"));
    EXPECT_FALSE(fs::exists(from_utf8(named)));
}

TEST_F(FileSystemContract, NonAsciiNames) {
    const std::string name = "caf\xC3\xA9 \xE2\x82\xAC.txt";  // "café €.txt"
    ASSERT_TRUE(files->append_file(path(name), "x\r\ny"));
    EXPECT_EQ(content(name), "x\r\ny");
    EXPECT_EQ(*files->read_file(path(name)), "x\r\ny");
    EXPECT_EQ(lines(name), (Lines{"x", "y"}));
    EXPECT_TRUE(files->any_ordinary_file(path("caf\xC3\xA9*")));
}

TEST_F(FileSystemContract, TreeSizeFreeSpaceAndMemory) {
    write("a.bin", std::string(100, 'a'));
    write("sub/b.bin", std::string(50, 'b'));
    EXPECT_EQ(files->tree_size(utf8(dir)), 150);
    EXPECT_EQ(files->tree_size(path("sub")), 50);
    EXPECT_EQ(files->tree_size(path("sub/")), 50);
    EXPECT_EQ(files->tree_size(path("a.bin")), std::nullopt);
    EXPECT_EQ(files->tree_size(path("none")), std::nullopt);
    EXPECT_EQ(files->tree_size(""), std::nullopt);

    EXPECT_GT(files->free_space(utf8(dir)).value_or(-1), 0);
    EXPECT_GT(files->free_space(path("a.bin")).value_or(-1), 0);
    EXPECT_TRUE(files->free_space("C:").has_value());
    EXPECT_TRUE(files->free_space("c:\\").has_value());

    const MemoryStatus m = make_environment()->memory();
    EXPECT_GT(m.available, 0);
    EXPECT_LE(m.available, m.total);
}

}  // namespace
}  // namespace quiller::testing
