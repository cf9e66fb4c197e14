// The walk's order and its failures (through a scripted folder reader), the day numbers of file
// times, and the scan-file reader's treatment of lines that are not records.
#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <string>
#include <vector>

#include "sync/local_days.hpp"
#include "sync/scan_file.hpp"
#include "sync/walk.hpp"

namespace quiller::sync {
namespace {

// Folders by path; a path with failures fails that many times before it lists.
struct ScriptedReader : DirectoryReader {
    std::map<std::string, std::vector<DirectoryEntry>> folders;
    std::map<std::string, std::vector<int>> failures;
    int list(const std::string& path, std::vector<DirectoryEntry>& entries) override {
        auto& f = failures[path];
        if (!f.empty()) {
            const int error = f.front();
            f.erase(f.begin());
            return error;
        }
        entries = folders.at(path);
        return 0;
    }
    bool transient(int error) const override { return error == EAGAIN; }
    SystemError describe(int error) const override {
        return {error, "code"};
    }
};

// A path written with "/" in the platform's form.
std::string n(std::string path) {
    for (char& c : path)
        if (c == '/') c = kSeparator;
    return path;
}
std::vector<std::string> ns(std::vector<std::string> paths) {
    for (auto& p : paths) p = n(p);
    return paths;
}

DirectoryEntry file(std::string name, int error = 0) {
    return {std::move(name), DirectoryEntry::Kind::File, 32, 5, 0, error};
}
DirectoryEntry folder(std::string name, DirectoryEntry::Kind kind = DirectoryEntry::Kind::Folder) {
    return {std::move(name), kind, 16, 0, 0, 0};
}

struct WalkTest : testing::Test {
    ScriptedReader reader;
    std::vector<std::string> lines;
    int retries = 0;
    WalkEvents events{[&](const std::string& l) { lines.push_back(l); }, nullptr,
                      [&](int) { return ++retries < 10; }};
    std::string p(std::string_view relative) { return n(join_path("r", relative)); }

    std::vector<std::string> walk(bool subfolders, bool expect_ok = true) {
        Listing listing;
        WalkOptions options;
        options.subfolders = subfolders;
        options.helper = false;
        int error = -1;
        EXPECT_EQ(walk_tree("r", options, reader, events, listing, error), expect_ok);
        std::vector<std::string> names;
        for (std::uint32_t i = 0; i < listing.size(); ++i) names.emplace_back(listing.name(i));
        return names;
    }

    void SetUp() override {
        using Kind = DirectoryEntry::Kind;
        reader.folders["r"] = {folder("b"),
                               file("x"),
                               folder("a"),
                               folder("link", Kind::FolderLink),
                               {"pipe", Kind::Other, 0, 0, 0, 0}};
        reader.folders[p("b")] = {file("1"), folder("deep")};
        reader.folders[p("b/deep")] = {file("2", ENOENT)};
        reader.folders[p("a")] = {file("3")};
    }
};

TEST_F(WalkTest, EachFolderBeforeItsSubFoldersInFoundOrder) {
    EXPECT_EQ(walk(true), ns({"b", "x", "a", "link", "b/1", "b/deep", "b/deep/2", "a/3"}));
    EXPECT_EQ(lines,
              ns({"(dirscan) Warning : Skipped r/pipe, which is neither a file nor a folder.",
                  "(dirscan) Warning : Couldn't read all attributes of r/b/deep/2. code (2)"}));
    EXPECT_EQ(walk(false), (std::vector<std::string>{"x"}));
}

TEST_F(WalkTest, PassingFailuresRetryLastingOnesWarn) {
    reader.failures[p("b")] = {EAGAIN, EAGAIN};  // walked again, records not doubled
    reader.failures[p("a")] = {EACCES};          // a warning, and counts as walked
    EXPECT_EQ(walk(true), ns({"b", "x", "a", "link", "b/1", "b/deep", "b/deep/2"}));
    EXPECT_EQ(retries, 2);
    EXPECT_EQ(lines.back(), n("(dirscan) Warning : Couldn't list r/a. code (13)"));

    reader.failures[p("b/deep")] = std::vector<int>(20, EAGAIN);  // given up by the caller
    EXPECT_TRUE(walk(true, false).empty());
    reader.failures["r"] = {EACCES};  // the root itself
    EXPECT_TRUE(walk(true, false).empty());
}

TEST(LocalDays, WholeSecondsInLocalTime) {
    EXPECT_EQ(day_number_of_local_seconds(0), 25569);
    EXPECT_DOUBLE_EQ(day_number_of_local_seconds(1577979045), 43832 + 55845.0 / 86400);
    EXPECT_DOUBLE_EQ(day_number_of_local_seconds(-2209161600 - 64800), -1.25);  // 29 Dec 1899 06:00
    LocalDays days;
    EXPECT_EQ(days.day_number(1577979045), days.day_number(1577979045));
}

TEST(ScanFileReader, MalformedLinesAreWarningsAndLeftOut) {
    std::vector<std::string> warnings;
    const ScanFileEvents events{[&](const std::string& w) { warnings.push_back(w); }, nullptr};
    Listing l;
    parse_scan_file("s.scn",
                    "C:\\data \r\n"
                    "a\\b.txt*43832.5*33*5000000000\r\n"
                    "no stars\n"
                    "c*x*32*1\n"
                    "d*1*99999*1\n"
                    "e*43831,25*32*7*8\n"
                    "f*1.5*16*\n"
                    "\n"
                    "g* 2 * 32 * 3 ",
                    events, l);
    EXPECT_EQ(l.root, "C:\\data");
    EXPECT_TRUE(l.subfolders);
    ASSERT_EQ(l.size(), 2u);
    EXPECT_EQ(l.name(0), std::string("a") + kSeparator + "b.txt");
    EXPECT_EQ(l.record(0).size, 5000000000);
    EXPECT_EQ(l.record(0).attributes, 33);
    EXPECT_EQ(l.name(1), "g");
    EXPECT_EQ(l.order, (std::vector<std::uint32_t>{0, 1}));
    ASSERT_EQ(warnings.size(), 7u);
    EXPECT_EQ(warnings[0], "(dc_scanfileread) The 1st line of 's.scn' is not a directory.");
    EXPECT_EQ(warnings[1], "(dc_scanfileread) Line 3 of 's.scn' is not a scan record: 'no stars'");
    EXPECT_EQ(l.warnings, 7u);

    Listing round;  // written and read back
    round.root = "r";
    round.subfolders = false;
    round.add("x", 43832.6463541667, 33, 1LL << 40);
    round.add("w", 1.15740740740741e-05, 16, 0);
    round.identity_order();
    const std::string text = scan_file_text(round);
    const std::string end = kSeparator == '/' ? "\n" : "\r\n";
    EXPECT_EQ(text, "r*nosub" + end + "x*43832.6463541667*33*1099511627776" + end +
                        "w*1.15740740740741E-05*16*0" + end);
    Listing back;
    parse_scan_file("t", text, events, back);
    EXPECT_FALSE(back.subfolders);
    EXPECT_EQ(back.record(1).date, 1.15740740740741e-05);
}

}  // namespace
}  // namespace quiller::sync
