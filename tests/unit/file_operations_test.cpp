// The file statements' own rules, apart from any file system: wildcards, path texts, roots, the
// home directory and attribute flags (the rows of cases/file_paths.tsv), and listing lines.
#include <gtest/gtest.h>

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

// Resolves the one path of a row; everything else is unknown.
class FakeOperations final : public testing::MemoryFiles {
  public:
    std::string path, resolved;
    std::vector<std::string> homes;

    bool same_file(const std::string&, const std::string&) override { return false; }
    std::string resolve(const std::string& p) override { return p == path ? resolved : ""; }
    std::vector<std::string> home_directories() override { return homes; }
};

// protected PATH RESOLVED HOME: why the path may not be removed.
std::string protection(const Cells& a) {
    FakeOperations ops;
    ops.path = a[0];
    ops.resolved = a[1];
    if (!a[2].empty()) ops.homes.push_back(a[2]);
    return protected_reason(ops, a[0]);
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
         {"flags", flags},
         {"protected", protection}});
}

// Folders' "<DIR>" lines are in fileops_dir.prg; links can't be made from a script.
TEST(Listing, LinksAreMarked) {
    const std::string when =
        value::format_date(value::local_day_number(1700000000), "yyyy-mm-dd hh:nn");
    ASSERT_EQ(when.size(), 16u);
    FileEntry dir{"logs", true, true, kAttrDirectory, 0, 1700000000};
    EXPECT_EQ(listing_line(dir, "sub/logs"), when + "    <LINK>         sub/logs");
}

}  // namespace
}  // namespace quiller::fileops
