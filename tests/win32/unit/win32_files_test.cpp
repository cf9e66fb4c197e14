// The Win32 file service where it differs from POSIX (the shared behaviour is in
// tests/unit/file_system_contract_test.cpp): devices, hidden files, and paths past MAX_PATH.
#include <gtest/gtest.h>
#include <windows.h>

#include "os/win32/win32_platform.hpp"
#include "scratch_folder.hpp"

namespace quiller::testing {
namespace {

class Win32Files : public ScratchFolder {
  protected:
    void hide(const std::string& name) {
        SetFileAttributesW(win32::widen(path(name)).c_str(), FILE_ATTRIBUTE_HIDDEN);
    }
    win32::Win32FileSystem files;
};

TEST_F(Win32Files, Devices) {
    EXPECT_EQ(files.open("NUL", OpenMode::Read).error().code, ERROR_INVALID_PARAMETER);
    auto sink = files.open("NUL", OpenMode::Write);
    ASSERT_TRUE(sink);
    EXPECT_TRUE((*sink)->write("discarded\n"));
}

// Status (attributes, size, time, folders) and plain wildcards are in the script tests
// conditions.prg and fileops_setattrib.prg; hidden files are not.
TEST_F(Win32Files, HiddenFilesAreNotOrdinaryAndStayHiddenWhenReplaced) {
    write("hidden.txt", "h");
    hide("hidden.txt");
    EXPECT_FALSE(files.any_ordinary_file(path("*.txt")));
    EXPECT_FALSE(files.any_ordinary_file(path("hidden.txt")));
    ASSERT_TRUE(files.replace_file(path("hidden.txt"), "after"));
    EXPECT_EQ(content("hidden.txt"), "after");
    EXPECT_TRUE(files.status(path("hidden.txt"))->attributes & kAttrHidden);
    write("plain.txt", "p");
    EXPECT_TRUE(files.any_ordinary_file(path("pl?in.TXT")));
}

// Paths past MAX_PATH work as any other, through the "\\?\" form.
TEST_F(Win32Files, LongPaths) {
    std::string deep = utf8(dir);
    while (deep.size() < 300) {
        deep += "\\" + std::string(40, 'd');
        ASSERT_TRUE(CreateDirectoryW(win32::native_path(deep).c_str(), nullptr));
    }
    const std::string file = deep + "\\long.txt";
    ASSERT_TRUE(files.append_file(file, "far away\n"));
    EXPECT_EQ(*files.read_file(file), "far away\n");
    ASSERT_TRUE(files.status(file));
    EXPECT_EQ(files.status(file)->size, 9);
    EXPECT_TRUE(files.replace_file(file, "nearer"));
    EXPECT_EQ(*files.read_file(file), "nearer");
    EXPECT_TRUE(files.any_ordinary_file(deep + "\\*.txt"));
    EXPECT_EQ(files.tree_size(utf8(dir)), 6);
    std::string failed;  // the scratch folder's own removal stops at MAX_PATH
    EXPECT_TRUE(files.remove_tree(utf8(dir / std::string(40, 'd')), failed)) << failed;
}

}  // namespace
}  // namespace quiller::testing
