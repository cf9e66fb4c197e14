// The POSIX file operations on real files in a scratch directory: links are never followed out
// of a tree, copies are whole and keep times and modes, nothing named is overwritten, roots and
// the home directory are protected through links, and the kept attribute word.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "bindings/file_operation_select.hpp"
#include "os/posix/posix_dos_attributes.hpp"
#include "os/posix/posix_platform.hpp"
#include "scratch_folder.hpp"

namespace quiller {
namespace {

namespace fs = std::filesystem;

class PosixFileOperationsTest : public testing::ScratchFolder {
  protected:
    unsigned mode(const std::string& name) const {
        return static_cast<unsigned>(fs::status(dir / name).permissions());
    }
    bool xattrs_work() const {
        write("probe", "");
        return ::setxattr(path("probe").c_str(), "user.probe", "1", 1, 0) == 0;
    }

    posix::PosixFileSystem ops;
};

TEST_F(PosixFileOperationsTest, EntriesDescribeLinksByTheirTargets) {
    write("a.txt", "12345");
    fs::create_directory(dir / "sub");
    fs::create_directory_symlink(dir / "sub", dir / "to-sub");
    fs::create_symlink(dir / "none", dir / "dangling");
    EXPECT_FALSE(ops.entry(path("a.txt"))->link);
    const FileEntry link = *ops.entry(path("to-sub") + "/");
    EXPECT_TRUE(link.directory && link.link);
    const FileEntry dangling = *ops.entry(path("dangling"));
    EXPECT_TRUE(dangling.link && !dangling.directory);
    EXPECT_FALSE(ops.status(path("dangling")));
    EXPECT_EQ(ops.entry(path("missing")).error().kind, ErrorKind::NotFound);
    EXPECT_EQ(ops.list(path(""))->size(), 4u);
}

TEST_F(PosixFileOperationsTest, RemovingATreeNeverFollowsLinks) {
    write("outside/keep.txt", "keep");
    write("tree/a/b/c.txt", "c");
    write("tree/read-only.txt", "r");
    fs::permissions(dir / "tree/read-only.txt", fs::perms::owner_read);
    fs::permissions(dir / "tree/a/b", fs::perms::owner_read | fs::perms::owner_exec);
    fs::create_directory_symlink(dir / "outside", dir / "tree/a/link-dir");
    fs::create_symlink(dir / "outside/keep.txt", dir / "tree/link-file");
    fs::create_directory_symlink(dir / "outside", dir / "link");
    std::string failed;
    ASSERT_TRUE(ops.remove_tree(path("tree"), failed)) << failed;
    EXPECT_FALSE(fs::exists(dir / "tree"));
    ASSERT_TRUE(ops.remove_tree(path("link"), failed));  // the link alone goes
    EXPECT_FALSE(fs::exists(fs::symlink_status(dir / "link")));
    EXPECT_EQ(content("outside/keep.txt"), "keep");
}

TEST_F(PosixFileOperationsTest, CopiesAreWholeAndKeepTimesAndMode) {
    write("from.txt", "content");
    ::chmod(path("from.txt").c_str(), 0640);
    const struct timespec times[2] = {{1000000000, 0}, {1234567890, 500}};
    ::utimensat(AT_FDCWD, path("from.txt").c_str(), times, 0);
    write("to.txt", "old and longer content");
    ASSERT_TRUE(ops.copy_file(path("from.txt"), path("to.txt"), {}));
    EXPECT_EQ(content("to.txt"), "content");
    EXPECT_EQ(mode("to.txt"), 0640u);
    struct stat st {};
    ::stat(path("to.txt").c_str(), &st);
    EXPECT_EQ(st.st_mtim.tv_sec, 1234567890);
    EXPECT_EQ(st.st_mtim.tv_nsec, 500);
    EXPECT_EQ(count(), 2);
    // A copy onto a link replaces what it points at and keeps the link.
    fs::create_symlink(dir / "to.txt", dir / "link.txt");
    write("from.txt", "new");
    ASSERT_TRUE(ops.copy_file(path("from.txt"), path("link.txt"), {}));
    EXPECT_TRUE(fs::is_symlink(dir / "link.txt"));
    EXPECT_EQ(content("to.txt"), "new");
}

TEST_F(PosixFileOperationsTest, NothingNamedIsOverwritten) {
    write("from.txt", "new");
    write("ro.txt", "old");
    ::chmod(path("ro.txt").c_str(), 0444);
    EXPECT_EQ(ops.copy_file(path("from.txt"), path("ro.txt"), {}).error().code, EACCES);
    EXPECT_EQ(content("ro.txt"), "old");
    fs::create_directory(dir / "d");
    EXPECT_FALSE(ops.copy_file(path("from.txt"), path("d"), {}));
    EXPECT_FALSE(ops.copy_file(path("from.txt"), path("./from.txt"), {}));
    EXPECT_EQ(content("from.txt"), "new");
    EXPECT_EQ(ops.copy_file(path("d"), path("x"), {}).error().code, EISDIR);
    EXPECT_EQ(ops.rename(path("from.txt"), path("ro.txt")).error().kind, ErrorKind::Exists);
    EXPECT_EQ(content("from.txt"), "new");
    EXPECT_EQ(content("ro.txt"), "old");
}

TEST_F(PosixFileOperationsTest, RootsAndTheHomeDirectoryAreProtectedThroughLinks) {
    fs::create_directories(dir / "home/ada/work");
    fs::create_directory_symlink(dir / "home/ada", dir / "to-home");
    fs::create_directory_symlink("/", dir / "to-root");
    EXPECT_EQ(ops.resolve(path("home/new/../other//")), path("home/other"));  // need not exist
    const testing::ScopedEnv home("HOME", path("home/ada"));
    const std::pair<std::string, const char*> cases[] = {
        {path("to-home"), "it is the home directory"},
        {path("home/ada/work/.."), "it is the home directory"},
        {path("home"), "it holds the home directory"},
        {path("to-root/"), "it is a root directory"},
        {path("home/ada/work"), ""},
    };
    for (const auto& [p, reason] : cases) EXPECT_EQ(fileops::protected_reason(ops, p), reason) << p;
}

TEST_F(PosixFileOperationsTest, ReadOnlyIsTheWriteBits) {
    write("f.txt", "x");
    ::chmod(path("f.txt").c_str(), 0664);
    EXPECT_EQ(ops.set_attributes(path("f.txt"), kAttrReadOnly, 0)->result, AttributeResult::Done);
    EXPECT_EQ(mode("f.txt"), 0444u);
    EXPECT_EQ(ops.set_attributes(path("f.txt"), 0, kAttrReadOnly)->result, AttributeResult::Done);
    EXPECT_EQ(mode("f.txt"), 0644u);  // the owner's write bit only
}

// Samba's word: set and cleared letters are covered by the script test fileops_setattrib.prg.
TEST_F(PosixFileOperationsTest, OtherAttributesAreKeptInTheExtendedAttribute) {
    if (!xattrs_work()) GTEST_SKIP() << "no user extended attributes here";
    const auto attributes = [&](const char* name) { return ops.status(path(name))->attributes; };
    write("f.txt", "x");
    EXPECT_EQ(ops.set_attributes(path("f.txt"), kAttrHidden | kAttrSystem, 0)->result,
              AttributeResult::Done);
    char value[32] = {};
    ASSERT_EQ(::getxattr(path("f.txt").c_str(), "user.DOSATTRIB", value, sizeof value - 1), 4);
    EXPECT_STREQ(value, "0x26");
    // A read-only file still takes changes, and a copy carries the word with archive set.
    EXPECT_EQ(ops.set_attributes(path("f.txt"), kAttrReadOnly | kAttrCompressed,
                                 kAttrArchive | kAttrSystem | kAttrHidden)
                  ->result,
              AttributeResult::Done);
    EXPECT_EQ(attributes("f.txt"), kAttrReadOnly | kAttrCompressed);
    ASSERT_TRUE(ops.copy_file(path("f.txt"), path("g.txt"), {}));
    EXPECT_EQ(attributes("g.txt"), kAttrReadOnly | kAttrArchive | kAttrCompressed);
    // A word that can't be read is ignored; a directory's word is read too.
    const char binary[] = {3, 0, 4, 0, 0, 0, 0, 0};
    write("h.txt", "x");
    ::setxattr(path("h.txt").c_str(), "user.DOSATTRIB", binary, sizeof binary, 0);
    EXPECT_EQ(attributes("h.txt"), kAttrArchive);
    fs::create_directory(dir / "d");
    ::setxattr(path("d").c_str(), "user.DOSATTRIB", "0x2", 3, 0);
    EXPECT_EQ(attributes("d"), kAttrDirectory | kAttrHidden);
}

}  // namespace
}  // namespace quiller
