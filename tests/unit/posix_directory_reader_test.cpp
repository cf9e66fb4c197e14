// The POSIX folder reader: attributes from mode bits and names, links seen through, a link to a
// folder marked so the walk never enters it, special files and unreadable entries.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "os/directory_reader.hpp"
#include "os/platform.hpp"
#include "scratch_folder.hpp"

namespace quiller {
namespace {

using PosixDirectoryReader = testing::ScratchFolder;

TEST_F(PosixDirectoryReader, EntriesAsTheWalkRecordsThem) {
    write(".hidden", "abc");
    write("ro", "x");
    ::chmod(path("ro").c_str(), 0444);
    ::mkdir(path("sub").c_str(), 0755);
    ASSERT_EQ(::symlink("sub", path("to_sub").c_str()), 0);
    ASSERT_EQ(::symlink(".hidden", path("to_file").c_str()), 0);
    ASSERT_EQ(::symlink("nowhere", path("dangling").c_str()), 0);
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);

    const auto reader = make_directory_reader();
    std::vector<DirectoryEntry> entries;
    ASSERT_EQ(reader->list(dir.string(), entries), 0);
    std::sort(entries.begin(), entries.end(),
              [](const auto& a, const auto& b) { return a.name < b.name; });
    using K = DirectoryEntry::Kind;
    const struct {
        const char* name;
        K kind;
        std::uint32_t attributes;
        std::int64_t size;
        int error;
    } expected[] = {
        {".hidden", K::File, kAttrArchive | kAttrHidden, 3, 0},
        {"dangling", K::File, 0, 0, ENOENT},
        {"pipe", K::Other, 0, 0, 0},
        {"ro", K::File, kAttrArchive | kAttrReadOnly, 1, 0},
        {"sub", K::Folder, kAttrDirectory, 0, 0},
        {"to_file", K::File, kAttrArchive, 3, 0},  // the target's, less the hidden name
        {"to_sub", K::FolderLink, kAttrDirectory, 0, 0},
    };
    ASSERT_EQ(entries.size(), std::size(expected));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const DirectoryEntry& e = entries[i];
        EXPECT_EQ(e.name, expected[i].name);
        EXPECT_EQ(e.kind, expected[i].kind) << e.name;
        EXPECT_EQ(e.size, expected[i].size) << e.name;
        EXPECT_EQ(e.error, expected[i].error) << e.name;
        if (e.kind != K::Other) {
            EXPECT_EQ(e.attributes, expected[i].attributes) << e.name;
        }
    }
    EXPECT_EQ(reader->list(path("missing"), entries), ENOENT);
    EXPECT_FALSE(reader->transient(ENOENT));
    EXPECT_TRUE(reader->transient(ETIMEDOUT));
}

}  // namespace
}  // namespace quiller
