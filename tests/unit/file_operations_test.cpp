// The file statements' own rules, apart from any file system: wildcards, path texts, roots and
// attribute flags (the rows of cases/file_paths.tsv), the home directory and listing lines.
#include <gtest/gtest.h>

#include <map>

#include "bindings/file_operation_select.hpp"
#include "bindings/file_operation_steps.hpp"
#include "os/file_operation_paths.hpp"
#include "os/platform.hpp"
#include "reference_table.hpp"
#include "scripted_host.hpp"
#include "value/format.hpp"

namespace quiller::fileops {
namespace {

using test::Cells;

std::string yes_no(bool b) {
    return b ? "yes" : "no";
}

// "+SET -CLEAR" in the letters R, H, S, A, C, or the word refused.
std::string flags(const Cells& a) {
    std::vector<std::string_view> words;
    for (std::string_view rest = a[0]; !rest.empty();) {
        const std::size_t bar = std::min(rest.find('|'), rest.size());
        words.push_back(rest.substr(0, bar));
        rest.remove_prefix(std::min(bar + 1, rest.size()));
    }
    std::string bad;
    const auto change = parse_attribute_flags(words, bad);
    if (!change) return "refused [" + bad + "]";
    const auto letters = [](std::uint32_t bits) {
        std::string out;
        for (const auto& [bit, letter] : {std::pair{kAttrReadOnly, 'R'},
                                          {kAttrHidden, 'H'},
                                          {kAttrSystem, 'S'},
                                          {kAttrArchive, 'A'},
                                          {kAttrCompressed, 'C'}})
            if (bits & bit) out += letter;
        return out;
    };
    return "+" + letters(change->set) + " -" + letters(change->clear);
}

TEST(FileOperationCases, EveryRowOfTheTable) {
    test::check_case_table(
        "file_paths.tsv",
        {{"wildcard", [](const Cells& a) { return yes_no(wildcard_match(a[0], a[1])); }},
         {"split",
          [](const Cells& a) {
              const PathSplit s = split(a[0]);
              return s.directory + "|" + s.name;
          }},
         {"join", [](const Cells& a) { return join(a[0], a[1], a[2][0]); }},
         {"strip", [](const Cells& a) { return std::string(strip_trailing_separators(a[0])); }},
         {"separator", [](const Cells& a) { return std::string(1, separator_of(a[0])); }},
         {"root", [](const Cells& a) { return yes_no(is_root(a[0])); }},
         {"within", [](const Cells& a) { return yes_no(same_or_within(a[0], a[1])); }},
         {"before", [](const Cells& a) { return yes_no(name_before(a[0], a[1])); }},
         {"flags", flags}});
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
