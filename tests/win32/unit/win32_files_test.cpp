// The Win32 file services on real files in a scratch folder: line ends across reads, file kinds,
// read-only files, atomic replacement, temporary names, tree sizes, wildcards, long and
// non-ASCII paths.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>

#include "os/win32/win32_platform.hpp"

namespace quiller::testing {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

// Removes a folder and everything in it, read-only files and paths past MAX_PATH included.
void remove_tree(const std::string& folder) {
    WIN32_FIND_DATAW entry{};
    HANDLE find = FindFirstFileW(win32::native_path(folder + "\\*").c_str(), &entry);
    if (find != INVALID_HANDLE_VALUE) {
        do {
            const std::string name = win32::narrow(entry.cFileName);
            if (name == "." || name == "..") continue;
            const std::string child = folder + "\\" + name;
            if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                remove_tree(child);
            } else {
                SetFileAttributesW(win32::native_path(child).c_str(), FILE_ATTRIBUTE_NORMAL);
                DeleteFileW(win32::native_path(child).c_str());
            }
        } while (FindNextFileW(find, &entry));
        FindClose(find);
    }
    RemoveDirectoryW(win32::native_path(folder).c_str());
}

class Win32Files : public ::testing::Test {
  protected:
    void SetUp() override {
        dir = fs::temp_directory_path() /
              ("quiller-files-" + std::to_string(GetCurrentProcessId()) + "-" +
               ::testing::UnitTest::GetInstance()->current_test_info()->name());
        remove_tree(win32::narrow(dir.wstring()));
        ASSERT_TRUE(fs::create_directories(dir));
    }
    void TearDown() override { remove_tree(win32::narrow(dir.wstring())); }
    // A path in the scratch folder, as UTF-8 (how the engine passes paths).
    std::string path(const std::string& name) const {
        return win32::narrow(dir.wstring()) + "\\" + name;
    }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(win32::widen(path(name)).c_str(), std::ios::binary) << bytes;
    }
    std::string content(const std::string& name) const {
        std::ifstream in(win32::widen(path(name)).c_str(), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    Lines lines(const std::string& name) {
        auto opened = files.open(path(name), OpenMode::Read);
        EXPECT_TRUE(opened);
        Lines out;
        if (!opened) return out;
        for (std::string line; (*opened)->read_line(line);) out.push_back(line);
        return out;
    }

    fs::path dir;
    win32::Win32FileSystem files;
};

TEST_F(Win32Files, LineEndsSplitAcrossReads) {
    const std::size_t buffer = 64 * 1024;
    const std::string a(buffer - 1, 'a');
    write("split.txt", a + "\r\nb\r");  // CR last in the first read, LF first in the next
    EXPECT_EQ(lines("split.txt"), (Lines{a, "b"}));
    write("lone.txt", a + "\rc");
    EXPECT_EQ(lines("lone.txt"), (Lines{a, "c"}));
    write("long.txt", std::string(3 * buffer + 7, 'x') + "\n\nz");
    EXPECT_EQ(lines("long.txt"), (Lines{std::string(3 * buffer + 7, 'x'), "", "z"}));
    // The end of the file stays the end, and a closed file reads nothing.
    auto opened = files.open(path("lone.txt"), OpenMode::Read);
    ASSERT_TRUE(opened);
    OpenFile* file = opened->get();
    std::string line;
    while (file->read_line(line)) {
    }
    EXPECT_FALSE(file->read_line(line));
    EXPECT_TRUE(file->close());
    EXPECT_FALSE(file->read_line(line));
}

TEST_F(Win32Files, FoldersMissingFilesAndDevices) {
    EXPECT_EQ(files.open(win32::narrow(dir.wstring()), OpenMode::Read).error().code,
              ERROR_ACCESS_DENIED);
    EXPECT_EQ(files.open(path("missing.txt"), OpenMode::Read).error().code, ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(files.open("", OpenMode::Write));
    EXPECT_EQ(files.open("NUL", OpenMode::Read).error().code, ERROR_INVALID_PARAMETER);
    auto sink = files.open("NUL", OpenMode::Write);
    ASSERT_TRUE(sink);
    EXPECT_TRUE((*sink)->write("discarded\n"));
}

TEST_F(Win32Files, WriteTruncatesAndAppendAppends) {
    write("w.txt", "old content\n");
    auto w = files.open(path("w.txt"), OpenMode::Write);
    ASSERT_TRUE(w);
    EXPECT_TRUE((*w)->write("new\n"));
    EXPECT_EQ(content("w.txt"), "new\n");  // written through at once
    EXPECT_TRUE((*w)->close());
    auto a = files.open(path("w.txt"), OpenMode::Append);
    ASSERT_TRUE(a);
    EXPECT_TRUE((*a)->write("more\n"));
    a->reset();
    EXPECT_EQ(content("w.txt"), "new\nmore\n");
    EXPECT_TRUE(files.append_file(path("w.txt"), "last"));
    EXPECT_EQ(content("w.txt"), "new\nmore\nlast");
}

TEST_F(Win32Files, ReadOnlyFilesAreNeitherTruncatedNorReplaced) {
    write("ro.txt", "keep me\n");
    SetFileAttributesW(win32::widen(path("ro.txt")).c_str(), FILE_ATTRIBUTE_READONLY);
    const auto st = files.status(path("ro.txt"));
    ASSERT_TRUE(st);
    EXPECT_TRUE(st->attributes & kAttrReadOnly);
    EXPECT_EQ(files.open(path("ro.txt"), OpenMode::Write).error().code, ERROR_ACCESS_DENIED);
    EXPECT_EQ(files.replace_file(path("ro.txt"), "changed").error().code, ERROR_ACCESS_DENIED);
    EXPECT_EQ(content("ro.txt"), "keep me\n");
    EXPECT_TRUE(files.open(path("ro.txt"), OpenMode::Read));
}

TEST_F(Win32Files, ReplaceKeepsAttributesAndLeavesNoTemporaryFile) {
    write("target.txt", "before");
    SetFileAttributesW(win32::widen(path("target.txt")).c_str(), FILE_ATTRIBUTE_HIDDEN);
    ASSERT_TRUE(files.replace_file(path("target.txt"), "after"));
    EXPECT_EQ(content("target.txt"), "after");
    EXPECT_TRUE(files.status(path("target.txt"))->attributes & kAttrHidden);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 1);
    ASSERT_TRUE(files.replace_file(path("new.txt"), "fresh"));
    EXPECT_EQ(content("new.txt"), "fresh");
    EXPECT_FALSE(files.replace_file(win32::narrow(dir.wstring()), "x"));
}

// Status (attributes, size, time, folders) and plain wildcards are in the script tests
// conditions_files.prg and fileops_setattrib.prg; hidden files are not.
TEST_F(Win32Files, HiddenFilesAreNotOrdinary) {
    write("hidden.txt", "h");
    SetFileAttributesW(win32::widen(path("hidden.txt")).c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_FALSE(files.any_ordinary_file(path("*.txt")));
    EXPECT_FALSE(files.any_ordinary_file(path("hidden.txt")));
    write("plain.txt", "p");
    EXPECT_TRUE(files.any_ordinary_file(path("pl?in.TXT")));
}

TEST_F(Win32Files, TemporaryNamesStayInTheTemporaryFolder) {
    const std::wstring folder = dir.wstring() + L"\\";
    wchar_t saved[MAX_PATH + 1] = {};
    const bool had = GetEnvironmentVariableW(L"TMP", saved, MAX_PATH + 1) > 0;
    SetEnvironmentVariableW(L"TMP", folder.c_str());
    const std::string created = files.temp_file_name("..\\x/yz", true);
    const std::string named = files.temp_file_name("q", false);
    SetEnvironmentVariableW(L"TMP", had ? saved : nullptr);
    ASSERT_FALSE(created.empty());
    EXPECT_EQ(fs::path(win32::widen(created)).parent_path(), dir);
    EXPECT_TRUE(fs::path(win32::widen(created)).filename().string().starts_with("..x"));
    EXPECT_TRUE(created.ends_with(".tmp"));
    EXPECT_TRUE(fs::exists(win32::widen(created)));
    EXPECT_TRUE(fs::path(win32::widen(named)).filename().string().starts_with("q"));
    EXPECT_FALSE(fs::exists(win32::widen(named)));
}

TEST_F(Win32Files, TreeSizeAndFreeSpace) {
    write("a.bin", std::string(100, 'a'));
    fs::create_directory(dir / "sub");
    write("sub\\b.bin", std::string(50, 'b'));
    EXPECT_EQ(files.tree_size(win32::narrow(dir.wstring())), 150);
    EXPECT_EQ(files.tree_size(path("sub")), 50);
    EXPECT_EQ(files.tree_size(path("sub\\")), 50);
    EXPECT_EQ(files.tree_size(path("a.bin")), std::nullopt);
    EXPECT_EQ(files.tree_size(path("none")), std::nullopt);
    EXPECT_GT(files.free_space(win32::narrow(dir.wstring())).value_or(-1), 0);
    EXPECT_GT(files.free_space(path("a.bin")).value_or(-1), 0);
    EXPECT_TRUE(files.free_space("C:").has_value());
}

TEST_F(Win32Files, NonAsciiNames) {
    const std::string name = "caf\xC3\xA9 \xE2\x82\xAC.txt";  // "café €.txt"
    ASSERT_TRUE(files.append_file(path(name), "x\r\ny"));
    EXPECT_TRUE(fs::exists(dir / win32::widen(name)));
    EXPECT_EQ(*files.read_file(path(name)), "x\r\ny");
    EXPECT_EQ(lines(name), (Lines{"x", "y"}));
    EXPECT_TRUE(files.any_ordinary_file(path("caf\xC3\xA9*")));
}

// Paths past MAX_PATH work as any other, through the "\\?\" form.
TEST_F(Win32Files, LongPaths) {
    std::string deep = win32::narrow(dir.wstring());
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
    EXPECT_EQ(files.tree_size(win32::narrow(dir.wstring())), 6);
    EXPECT_TRUE(win32::native_path(file).starts_with(L"\\\\?\\"));
    EXPECT_EQ(win32::native_path("C:\\short.txt"), L"C:\\short.txt");
}

}  // namespace
}  // namespace quiller::testing
