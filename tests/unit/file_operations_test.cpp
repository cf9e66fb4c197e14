// The file statements' own rules, apart from any file system: wildcards, path texts, roots and
// the home directory, attribute flags and listing lines.
#include <gtest/gtest.h>

#include <map>
#include <tuple>

#include "value/format.hpp"
#include "os/file_operation_paths.hpp"
#include "bindings/file_operation_select.hpp"
#include "bindings/file_operation_steps.hpp"
#include "os/platform.hpp"
#include "scripted_host.hpp"

namespace quiller::fileops {
namespace {

TEST(FileOperationPaths, Wildcards) {
    const bool dots = !kWildcardsSkipDotNames;
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"*.txt", "A.TXT", true},     {"a?c.*", "ABC.log", true},     {"?.txt", "ab.txt", false},
        {"*.*", "README", true},      {"*a*b*", "xxaYYbzz", true},    {"*a*b", "xxaYYbzz", false},
        {"report", "report2", false}, {"?pfel", "äpfel", true},       {"Ä*", "äpfel", true},
        {"??", "日本", true},         {"???", "日本", false},         {".*", ".profile", true},
        {"*", ".profile", dots},      {"?profile", ".profile", dots},
    };
    for (const auto& [pattern, name, matches] : cases)
        EXPECT_EQ(wildcard_match(pattern, name), matches) << pattern << " " << name;
}

TEST(FileOperationPaths, SplitJoinAndTrailingSeparators) {
    EXPECT_EQ(split("/c.txt").directory, "/");
    EXPECT_EQ(split("C:\\c.txt").directory, "C:\\");
    EXPECT_EQ(split("C:c.txt").directory, "C:");
    EXPECT_EQ(split("C:c.txt").name, "c.txt");
    EXPECT_EQ(join("/", "x", '/'), "/x");
    EXPECT_EQ(join("C:", "x", '\\'), "C:x");
    EXPECT_EQ(strip_trailing_separators("///"), "/");
    EXPECT_EQ(strip_trailing_separators("C:\\"), "C:\\");
    EXPECT_EQ(separator_of("a\\b/c"), '/');
    EXPECT_EQ(separator_of("a/b\\c"), '\\');
    EXPECT_EQ(separator_of("abc"), kNativeSeparator);
}

TEST(FileOperationPaths, RootsContainmentAndOrder) {
    for (const char* root :
         {"/", "//", "\\", "C:", "c:\\", "C:/", "C:\\\\", "\\\\server\\share", "//server/share/"})
        EXPECT_TRUE(is_root(root)) << root;
    for (const char* other :
         {"", "C:\\x", "/tmp", "\\\\server", "\\\\server\\share\\x", "CC:", "C:x"})
        EXPECT_FALSE(is_root(other)) << other;
    EXPECT_TRUE(same_or_within("/a/b", "/a"));
    EXPECT_TRUE(same_or_within("/a", "/a"));
    EXPECT_TRUE(same_or_within("/a", "/"));
    EXPECT_TRUE(same_or_within("C:\\a", "C:\\"));
    EXPECT_FALSE(same_or_within("/ab", "/a"));
    EXPECT_FALSE(same_or_within("/a", "/a/b"));
    EXPECT_EQ(same_or_within("C:\\Users\\Ada", "c:\\users"), kCaseBlindPaths);
    EXPECT_TRUE(name_before("B", "b"));  // a tie in case falls back to the bytes
    EXPECT_FALSE(name_before("b", "B"));
}

// Resolves paths from a table; everything else is unknown.
class FakeOperations final : public testing::MemoryFiles {
  public:
    std::map<std::string, std::string> resolved;
    std::vector<std::string> homes{"/home/ada"};

    bool same_file(const std::string&, const std::string&) override { return false; }
    std::string resolve(const std::string& path) override {
        const auto it = resolved.find(path);
        return it == resolved.end() ? std::string() : it->second;
    }
    std::vector<std::string> home_directories() override { return homes; }
};

TEST(FileOperationSafety, RootsHomeAndWhatHoldsIt) {
    FakeOperations ops;
    ops.resolved = {{"/tmp/..", "/"},
                    {"/tmp/to-root", "/"},
                    {"D:\\data\\..", "D:\\"},
                    {"/home/ada/", "/home/ada"},
                    {"~ada", "/home/ada"},
                    {"/home", "/home"},
                    {"/home/ada/work", "/home/ada/work"}};
    const std::pair<const char*, const char*> cases[] = {
        {"/", "it is a root directory"},
        {"C:", "it is a root directory"},
        {"\\\\server\\share\\", "it is a root directory"},
        {"/tmp/..", "it is a root directory"},
        {"/tmp/to-root", "it is a root directory"},
        {"D:\\data\\..", "it is a root directory"},
        {"/home/ada/", "it is the home directory"},
        {"~ada", "it is the home directory"},
        {"/home", "it holds the home directory"},
        {"/home/ada/work", ""},
        {"/unknown", "its place can't be made out"},
    };
    for (const auto& [path, reason] : cases) EXPECT_EQ(protected_reason(ops, path), reason) << path;
    ops.homes.clear();  // without a home, only roots are refused
    EXPECT_EQ(protected_reason(ops, "/home"), "");
}

AttributeChange flags(std::vector<std::string_view> words, std::string* bad_out = nullptr) {
    std::string bad;
    const auto change = parse_attribute_flags(words, bad);
    if (bad_out) *bad_out = bad;
    return change.value_or(AttributeChange{0xFFFF, 0xFFFF});
}

// The script test fileops_setattrib.prg has the common forms; these are the rest.
TEST(AttributeFlags, SignsLettersAndRefusals) {
    const AttributeChange c = flags({"+R", "-S", "+c", "-h", "+RH-A"});
    EXPECT_EQ(c.set, kAttrReadOnly | kAttrHidden | kAttrCompressed);
    EXPECT_EQ(c.clear, kAttrSystem | kAttrArchive);  // the last flag for a letter wins
    const AttributeChange d = flags({"+R -H,+A"});
    EXPECT_EQ(d.set, kAttrReadOnly | kAttrArchive);
    EXPECT_EQ(d.clear, kAttrHidden);
    std::string bad;
    for (const char* word : {"R", "+X", "+", "+R-", "++R", "+R H", "-D"}) {
        EXPECT_EQ(flags({word}, &bad).set, 0xFFFFu) << word;
        EXPECT_EQ(bad, word);
    }
    EXPECT_EQ(flags({}, &bad).set, 0xFFFFu);
    EXPECT_EQ(bad, "");
}

TEST(Listing, LinksAreMarked) {
    const std::string when =
        value::format_date(value::local_day_number(1700000000), "yyyy-mm-dd hh:nn");
    ASSERT_EQ(when.size(), 16u);
    FileEntry dir{"logs", true, true, kAttrDirectory, 0, 1700000000};
    EXPECT_EQ(listing_line(dir, "sub/logs"), when + "    <LINK>         sub/logs");
    dir.link = false;
    EXPECT_EQ(listing_line(dir, "logs"), when + "    <DIR>          logs");
}

}  // namespace
}  // namespace quiller::fileops
