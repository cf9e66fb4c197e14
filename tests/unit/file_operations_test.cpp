// The file statements' own rules, apart from any file system: wildcards, path texts, roots and
// the home directory, attribute flags and listing lines.
#include <gtest/gtest.h>

#include <map>

#include "common/format.hpp"
#include "services/file_operation_paths.hpp"
#include "services/file_operation_select.hpp"
#include "services/file_operation_steps.hpp"
#include "services/platform.hpp"

namespace quiller::fileops {
namespace {

TEST(FileOperationPaths, WildcardsIgnoreCase) {
    EXPECT_TRUE(wildcard_match("*.txt", "A.TXT"));
    EXPECT_TRUE(wildcard_match("a?c.*", "ABC.log"));
    EXPECT_FALSE(wildcard_match("?.txt", "ab.txt"));
    EXPECT_TRUE(wildcard_match("*", "anything"));
    EXPECT_TRUE(wildcard_match("*.*", "README"));
    EXPECT_TRUE(wildcard_match("*a*b*", "xxaYYbzz"));
    EXPECT_FALSE(wildcard_match("*a*b", "xxaYYbzz"));
    EXPECT_TRUE(wildcard_match("report", "REPORT"));
    EXPECT_FALSE(wildcard_match("report", "report2"));
}

TEST(FileOperationPaths, QuestionMarkIsOneCharacter) {
    EXPECT_TRUE(wildcard_match("?pfel", "äpfel"));
    EXPECT_TRUE(wildcard_match("Ä*", "äpfel"));
    EXPECT_TRUE(wildcard_match("??", "日本"));
    EXPECT_FALSE(wildcard_match("???", "日本"));
}

TEST(FileOperationPaths, LeadingDotNames) {
    EXPECT_TRUE(wildcard_match(".*", ".profile"));
    EXPECT_EQ(wildcard_match("*", ".profile"), !kWildcardsSkipDotNames);
    EXPECT_EQ(wildcard_match("?profile", ".profile"), !kWildcardsSkipDotNames);
}

TEST(FileOperationPaths, SplitJoinAndTrailingSeparators) {
    EXPECT_EQ(split("a/b/c.txt").directory, "a/b");
    EXPECT_EQ(split("a/b/c.txt").name, "c.txt");
    EXPECT_EQ(split("c.txt").directory, "");
    EXPECT_EQ(split("/c.txt").directory, "/");
    EXPECT_EQ(split("C:\\c.txt").directory, "C:\\");
    EXPECT_EQ(split("C:c.txt").directory, "C:");
    EXPECT_EQ(split("C:c.txt").name, "c.txt");
    EXPECT_EQ(join("", "x", '/'), "x");
    EXPECT_EQ(join("/", "x", '/'), "/x");
    EXPECT_EQ(join("C:", "x", '\\'), "C:x");
    EXPECT_EQ(join("a\\b", "x", '\\'), "a\\b\\x");
    EXPECT_EQ(strip_trailing_separators("dir///"), "dir");
    EXPECT_EQ(strip_trailing_separators("/"), "/");
    EXPECT_EQ(strip_trailing_separators("///"), "/");
    EXPECT_EQ(strip_trailing_separators("C:\\"), "C:\\");
    EXPECT_EQ(separator_of("a\\b/c"), '/');
    EXPECT_EQ(separator_of("a/b\\c"), '\\');
    EXPECT_EQ(separator_of("abc"), kNativeSeparator);
}

TEST(FileOperationPaths, Roots) {
    for (const char* root :
         {"/", "//", "\\", "C:", "c:\\", "C:/", "C:\\\\", "\\\\server\\share", "//server/share/"})
        EXPECT_TRUE(is_root(root)) << root;
    for (const char* other :
         {"", "C:\\x", "/tmp", "\\\\server", "\\\\server\\share\\x", "CC:", "C:x"})
        EXPECT_FALSE(is_root(other)) << other;
}

TEST(FileOperationPaths, Containment) {
    EXPECT_TRUE(same_or_within("/a/b", "/a"));
    EXPECT_TRUE(same_or_within("/a", "/a"));
    EXPECT_TRUE(same_or_within("/a", "/"));
    EXPECT_TRUE(same_or_within("C:\\a", "C:\\"));
    EXPECT_FALSE(same_or_within("/ab", "/a"));
    EXPECT_FALSE(same_or_within("/a", "/a/b"));
    EXPECT_EQ(same_or_within("C:\\Users\\Ada", "c:\\users"), kCaseBlindPaths);
}

TEST(FileOperationPaths, NameOrderIgnoresCase) {
    EXPECT_TRUE(name_before("apple", "Banana"));
    EXPECT_TRUE(name_before("B", "b"));  // a tie in case falls back to the bytes
    EXPECT_FALSE(name_before("b", "B"));
}

// Resolves paths from a table; everything else is unknown.
class FakeOperations final : public FileOperations {
  public:
    std::map<std::string, std::string> resolved;
    std::vector<std::string> homes{"/home/ada"};

    std::optional<FileEntry> entry(const std::string&, int& error) override {
        error = 2;
        return std::nullopt;
    }
    std::optional<std::vector<FileEntry>> list(const std::string&, int& error) override {
        error = 2;
        return std::nullopt;
    }
    bool not_found(int error) override { return error == 2; }
    bool same_file(const std::string&, const std::string&) override { return false; }
    std::string resolve(const std::string& path) override {
        const auto it = resolved.find(path);
        return it == resolved.end() ? std::string() : it->second;
    }
    std::vector<std::string> home_directories() override { return homes; }
    bool copy_file(const std::string&, const std::string&, int&) override { return false; }
    bool remove_file(const std::string&, int&) override { return false; }
    bool make_directory(const std::string&, int&) override { return false; }
    bool remove_directory(const std::string&, int&) override { return false; }
    bool remove_tree(const std::string&, std::string&, int&) override { return false; }
    bool rename(const std::string&, const std::string&, int&) override { return false; }
    AttributeResult set_attributes(const std::string&, std::uint32_t, std::uint32_t,
                                   int&) override {
        return AttributeResult::Failed;
    }
};

TEST(FileOperationSafety, RootsHomeAndWhatHoldsIt) {
    FakeOperations ops;
    ops.resolved = {{"/tmp/..", "/"},
                    {"/tmp/to-root", "/"},
                    {"D:\\data\\..", "D:\\"},
                    {"/home/ada/", "/home/ada"},
                    {"~ada", "/home/ada"},
                    {"/home", "/home"},
                    {"/home/ada/work", "/home/ada/work"},
                    {"/srv/x", "/srv/x"}};
    EXPECT_EQ(protected_reason(ops, "/"), "it is a root directory");
    EXPECT_EQ(protected_reason(ops, "C:"), "it is a root directory");
    EXPECT_EQ(protected_reason(ops, "C:\\"), "it is a root directory");
    EXPECT_EQ(protected_reason(ops, "\\\\server\\share\\"), "it is a root directory");
    EXPECT_EQ(protected_reason(ops, "/tmp/.."), "it is a root directory");
    EXPECT_EQ(protected_reason(ops, "/tmp/to-root"), "it is a root directory");
    EXPECT_EQ(protected_reason(ops, "D:\\data\\.."), "it is a root directory");
    EXPECT_EQ(protected_reason(ops, "/home/ada/"), "it is the home directory");
    EXPECT_EQ(protected_reason(ops, "~ada"), "it is the home directory");
    EXPECT_EQ(protected_reason(ops, "/home"), "it holds the home directory");
    EXPECT_EQ(protected_reason(ops, "/home/ada/work"), "");
    EXPECT_EQ(protected_reason(ops, "/srv/x"), "");
    EXPECT_EQ(protected_reason(ops, "/unknown"), "its place can't be made out");
}

TEST(FileOperationSafety, WithoutAHomeOnlyRootsAreRefused) {
    FakeOperations ops;
    ops.homes.clear();
    ops.resolved = {{"/home", "/home"}};
    EXPECT_EQ(protected_reason(ops, "/home"), "");
}

AttributeChange flags(std::vector<std::string_view> words, std::string* bad_out = nullptr) {
    std::string bad;
    const auto change = parse_attribute_flags(words, bad);
    if (bad_out) *bad_out = bad;
    return change.value_or(AttributeChange{0xFFFF, 0xFFFF});
}

TEST(AttributeFlags, SignsApplyToTheLettersAfterThem) {
    EXPECT_EQ(flags({"+R"}).set, kAttrReadOnly);
    EXPECT_EQ(flags({"-h"}).clear, kAttrHidden);
    const AttributeChange c = flags({"+RH-A"});
    EXPECT_EQ(c.set, kAttrReadOnly | kAttrHidden);
    EXPECT_EQ(c.clear, kAttrArchive);
    const AttributeChange d = flags({"+R", "-S", "+c"});
    EXPECT_EQ(d.set, kAttrReadOnly | kAttrCompressed);
    EXPECT_EQ(d.clear, kAttrSystem);
    const AttributeChange e = flags({"+R -H,+A"});
    EXPECT_EQ(e.set, kAttrReadOnly | kAttrArchive);
    EXPECT_EQ(e.clear, kAttrHidden);
}

TEST(AttributeFlags, TheLastFlagForALetterWins) {
    const AttributeChange c = flags({"+R", "-R"});
    EXPECT_EQ(c.set, 0u);
    EXPECT_EQ(c.clear, kAttrReadOnly);
}

TEST(AttributeFlags, AnythingElseIsRefused) {
    std::string bad;
    for (const char* word : {"R", "+X", "+", "+R-", "++R", "+R H", "-D"}) {
        EXPECT_EQ(flags({word}, &bad).set, 0xFFFFu) << word;
        EXPECT_EQ(bad, word);
    }
    EXPECT_EQ(flags({}, &bad).set, 0xFFFFu);
    EXPECT_EQ(bad, "");
}

TEST(Listing, FilesAndDirectories) {
    FileEntry file{"report.txt", false, false, kAttrArchive, 12345, 1700000000};
    const std::string when =
        value::format_date(value::local_day_number(1700000000), "yyyy-mm-dd hh:nn");
    ASSERT_EQ(when.size(), 16u);
    EXPECT_EQ(listing_line(file, "report.txt"), when + "            12,345 report.txt");
    FileEntry dir{"logs", true, false, kAttrDirectory, 0, 1700000000};
    EXPECT_EQ(listing_line(dir, "sub/logs"), when + "    <DIR>          sub/logs");
    dir.link = true;
    EXPECT_EQ(listing_line(dir, "logs"), when + "    <LINK>         logs");
    file.size = 0;
    EXPECT_EQ(listing_line(file, "empty"), when + "                 0 empty");
}

}  // namespace
}  // namespace quiller::fileops
