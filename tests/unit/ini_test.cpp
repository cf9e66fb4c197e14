// INI files: the profile reader (case, blanks, quotes, comments, duplicates, NUL, length), the
// line reader of large files, section listing, the profile writer (in-place edits, new keys,
// sections and files, deletion, line breaks), the cache, and the statements through the engine.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>

#include "scripted_host.hpp"
#include "services/ini_profile.hpp"

namespace quiller::testing {
namespace {

using ini::EditKind;
using ini::ProfileEdit;

std::string read(std::string_view bytes, std::string_view section, std::string_view key,
                 std::string_view fallback = "DEF") {
    return ini::profile_string(ini::parse_profile(bytes), section, key, fallback);
}

std::string set(std::string_view bytes, std::string_view section, std::string_view key,
                std::string_view value, std::string_view brk = "\n") {
    return ini::apply_edit(bytes, {EditKind::SetValue, section, key, value}, brk);
}

// A file of at least `size` bytes: `head`, filler sections, then `tail`.
std::string large_file(std::string_view head, std::string_view tail, std::size_t size = 70000) {
    std::string s(head);
    for (int i = 0; s.size() + tail.size() < size; ++i)
        s += "[filler" + std::to_string(i) + "]\nsome=value of the filler section\n";
    return s + std::string(tail);
}

// --- Lines ----------------------------------------------------------------------------------

TEST(IniLines, BreaksOfEveryKind) {
    const auto lines = ini::split_lines("a\r\nb\nc\rd");
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0].text, "a");
    EXPECT_EQ(lines[0].end, "\r\n");
    EXPECT_EQ(lines[1].end, "\n");
    EXPECT_EQ(lines[2].end, "\r");
    EXPECT_EQ(lines[3].text, "d");
    EXPECT_EQ(lines[3].end, "");
    EXPECT_TRUE(ini::split_lines("").empty());
    EXPECT_EQ(ini::split_lines("\n\n").size(), 2u);
    EXPECT_EQ(ini::split_lines("\xEF\xBB\xBFx")[0].text, "x");
}

// --- The profile reader ---------------------------------------------------------------------

TEST(IniProfileReader, CaseBlindNamesAndBlanks) {
    const std::string f = "[  Main Section ]\n  Name   =   Ada Lovelace  \n\tTab\t=\tx\t\n";
    EXPECT_EQ(read(f, "main section", "NAME"), "Ada Lovelace");
    EXPECT_EQ(read(f, " MAIN SECTION ", " name "), "Ada Lovelace");
    EXPECT_EQ(read(f, "Main Section", "tab"), "x");
    EXPECT_EQ(read("[Größe]\nÄpfel=1\n", "GRÖSSE", "äpfel"), "1");
}

TEST(IniProfileReader, MissingFileSectionOrKeyGivesTheDefault) {
    EXPECT_EQ(read("", "a", "b"), "DEF");
    EXPECT_EQ(read("[a]\nb=1\n", "x", "b"), "DEF");
    EXPECT_EQ(read("[a]\nb=1\n", "a", "x"), "DEF");
    EXPECT_EQ(read("[a]\nb=\n", "a", "b"), "");
    // The default loses its trailing blanks, as the platform's reader does.
    EXPECT_EQ(read("", "a", "b", "  def  "), "  def");
}

TEST(IniProfileReader, FirstSectionAndFirstKeyWin) {
    const std::string f = "[s]\nk=1\nk=2\n[S]\nk=3\nonly=4\n";
    EXPECT_EQ(read(f, "s", "k"), "1");
    EXPECT_EQ(read(f, "s", "only"), "DEF");  // only the first section is searched
}

TEST(IniProfileReader, CommentsLinesWithoutEqualsAndKeysOutsideSections) {
    const std::string f = "k=outside\n[s]\n; k=comment\n  ;k=indented\nplain line\nk=real\n";
    EXPECT_EQ(read(f, "s", "k"), "real");
    EXPECT_EQ(read(f, "s", "plain line"), "DEF");
    EXPECT_EQ(read(f, "s", "; k"), "DEF");
    EXPECT_EQ(read("[s]\n=empty name\n", "s", ""), "empty name");
}

TEST(IniProfileReader, HeaderNameEndsAtTheLastBracket) {
    EXPECT_EQ(read("[a]b]\nk=1\n", "a]b", "k"), "1");
    EXPECT_EQ(read("[open\nk=1\n", "open", "k"), "DEF");
    EXPECT_EQ(read("[s]\n[k=1\nk=2\n", "s", "[k"), "1");
}

TEST(IniProfileReader, EnclosingQuotesAreRemoved) {
    const std::string f =
        "[q]\nd=\"double\"\ns='single'\nm=\"mixed'\nin=a \"b\" c\none=\"\nempty=\"\"\n"
        "inner=\"a\"b\"\n";
    EXPECT_EQ(read(f, "q", "d"), "double");
    EXPECT_EQ(read(f, "q", "s"), "single");
    EXPECT_EQ(read(f, "q", "m"), "\"mixed'");
    EXPECT_EQ(read(f, "q", "in"), "a \"b\" c");
    EXPECT_EQ(read(f, "q", "one"), "\"");
    EXPECT_EQ(read(f, "q", "empty"), "");
    EXPECT_EQ(read(f, "q", "inner"), "a\"b");
}

TEST(IniProfileReader, ValueIsCutAtNulAndTo254Characters) {
    using namespace std::string_literals;
    EXPECT_EQ(read("[s]\nk=ab\0cd\n"s, "s", "k"), "ab");
    EXPECT_EQ(read("[s]\nk=\"ab\0cd\"\n"s, "s", "k"), "\"ab");
    EXPECT_EQ(read("[s\0x]\nk=1\n"s, "s\0x"s, "k"), "1");
    const std::string long_value(300, 'v');
    EXPECT_EQ(read("[s]\nk=" + long_value + "\n", "s", "k"), std::string(254, 'v'));
    EXPECT_EQ(read("", "s", "k", long_value), std::string(254, 'v'));
    std::string accents;
    for (int i = 0; i < 300; ++i) accents += "\xC3\xA9";
    EXPECT_EQ(read("[s]\nk=" + accents + "\n", "s", "k"), accents.substr(0, 508));
}

TEST(IniProfileReader, LineBreaksAndByteOrderMark) {
    EXPECT_EQ(read("[s]\r\nk=crlf\r\n", "s", "k"), "crlf");
    EXPECT_EQ(read("[s]\rk=cr", "s", "k"), "cr");
    EXPECT_EQ(read("\xEF\xBB\xBF[s]\nk=bom", "s", "k"), "bom");
}

TEST(IniProfileReader, JunkAndHugeLinesDoNotBreakIt) {
    std::mt19937 rng(7);
    std::string junk(60000, '\0');
    for (char& c : junk) c = static_cast<char>(rng());
    (void)read(junk, "s", "k");
    const std::string huge(1 << 20, 'x');
    EXPECT_EQ(read("[s]\nk=" + huge + "\nj=2", "s", "j"), "2");
    EXPECT_EQ(read("[s]\nk=" + huge, "s", "k"), std::string(254, 'x'));
    EXPECT_EQ(read("[" + huge + "]\nk=1", huge, "k"), "1");
}

// --- The line reader ------------------------------------------------------------------------

TEST(IniLineReader, PrefixRulesAndUntrimmedValues) {
    const ini::LineFile f =
        ini::index_lines("[Main]tail\nKey= spaced value \nsp = x\nq=\"quoted\"\n[Next]\nafter=1\n");
    EXPECT_EQ(ini::line_reader_value(f, "main", "KEY"), " spaced value ");
    EXPECT_EQ(ini::line_reader_value(f, "main", "sp"), std::nullopt);  // blanks before "="
    EXPECT_EQ(ini::line_reader_value(f, "main", "q"), "\"quoted\"");
    EXPECT_EQ(ini::line_reader_value(f, "main", "after"), std::nullopt);
    EXPECT_EQ(ini::line_reader_value(f, "next", "after"), "1");
    EXPECT_EQ(ini::line_reader_value(f, "mai", "key"), std::nullopt);
}

TEST(IniLineReader, KeyPrefixAndFirstSectionOnly) {
    const ini::LineFile f = ini::index_lines("[s]\nkeyword=long\nkey=short\n[s]\nother=1\n");
    EXPECT_EQ(ini::line_reader_value(f, "S", "key"), "short");
    EXPECT_EQ(ini::line_reader_value(f, "s", "other"), std::nullopt);
    EXPECT_EQ(ini::line_reader_value(ini::index_lines(" [s]\nk=1\n"), "s", "k"), std::nullopt);
    EXPECT_EQ(ini::line_reader_value(ini::index_lines("[Ärger]\nÖl=x\n"), "äRGER", "öl"), "x");
}

TEST(IniLineReader, ThresholdSwitchesReaders) {
    MemoryFiles files;
    const std::string head = "[s]\nk = \"padded\" \n";
    const std::string small = large_file(head, "", 63900);
    files.files["small.ini"] = small + std::string(63999 - small.size(), ';');
    files.files["large.ini"] = small + std::string(64000 - small.size(), ';');
    ASSERT_EQ(files.files["small.ini"].size(), 63999u);
    EXPECT_EQ(ini::read_ini(files, "small.ini", "s", "k", "d "), "padded");
    EXPECT_EQ(ini::read_ini(files, "large.ini", "s", "k", "d "), "d ");
    files.files["large2.ini"] = large_file("[s]\nk= raw \n", "[end]\nk=\"e\"\n");
    EXPECT_EQ(ini::read_ini(files, "large2.ini", "S", "K", "d"), " raw ");
    EXPECT_EQ(ini::read_ini(files, "large2.ini", "end", "k", "d"), "\"e\"");
    EXPECT_EQ(ini::read_ini(files, "missing.ini", "s", "k", "d "), "d");
}

TEST(IniLineReader, JunkAndHugeLines) {
    MemoryFiles files;
    std::mt19937 rng(11);
    std::string junk(200000, '\0');
    for (char& c : junk) c = static_cast<char>(rng());
    files.files["junk.ini"] = junk;
    EXPECT_EQ(ini::read_ini(files, "junk.ini", "s", "k", "d"), "d");
    files.files["huge.ini"] = "[s]\n" + std::string(1 << 20, 'z') + "\nk=v";
    EXPECT_EQ(ini::read_ini(files, "huge.ini", "s", "k", "d"), "v");
    files.files["nul.ini"] = large_file(std::string("[s]\nk=a\0b\n", 10), "");
    EXPECT_EQ(ini::read_ini(files, "nul.ini", "s", "k", "d"), std::string("a\0b", 3));
}

// --- Section listing ------------------------------------------------------------------------

TEST(IniSectionEntries, ListsTrimmedEntries) {
    const std::string f =
        "[other]\nx=0\n[Main]\n name = Ada \n;comment=1\nno equals\n k=v=w\n=e\n [x]\ny=1\n[z]\n";
    EXPECT_EQ(ini::section_entries(f, "MAIN"),
              (std::vector<std::string>{"name=Ada", "k=v=w", "=e", "y=1"}));
}

TEST(IniSectionEntries, HeaderMustMatchExactlyInLowerCase) {
    EXPECT_EQ(ini::section_entries("[Main] \nk=1\n", "main").size(), 0u);
    EXPECT_EQ(ini::section_entries("[ Main]\nk=1\n", "main").size(), 0u);
    EXPECT_EQ(ini::section_entries("[MAIN]\r\nk=1\r\n[n]\r\nj=2\r\n", "main"),
              std::vector<std::string>{"k=1"});
    EXPECT_EQ(ini::section_entries("[main]\n", "main").size(), 0u);
    EXPECT_EQ(ini::section_entries("", "main").size(), 0u);
}

// --- The profile writer ---------------------------------------------------------------------

TEST(IniWriter, ReplacesInPlaceKeepingSpellingBlanksAndBreaks) {
    const std::string f = "; head\r\n[Main]\r\n  UserName = old \r\nOther=1\r\n";
    EXPECT_EQ(set(f, "main", "username", "new"),
              "; head\r\n[Main]\r\n  UserName = new\r\nOther=1\r\n");
    EXPECT_EQ(set(f, "MAIN", "USERNAME", ""), "; head\r\n[Main]\r\n  UserName =\r\nOther=1\r\n");
    EXPECT_EQ(set("[s]\nk=\n", "s", "k", "v"), "[s]\nk=v\n");
    EXPECT_EQ(set("[s]\nk=1", "s", "k", "22"), "[s]\nk=22");
    EXPECT_EQ(set(f, "main", "other", "1"), f);
}

TEST(IniWriter, NewKeyGoesAfterTheSectionsLastNonEmptyLine) {
    EXPECT_EQ(set("[a]\nx=1\n; note\n\n\n[b]\ny=2\n", "A", "new", "v"),
              "[a]\nx=1\n; note\nnew=v\n\n\n[b]\ny=2\n");
    EXPECT_EQ(set("[a]\r\n[b]\r\n", "a", "k", "v"), "[a]\r\nk=v\r\n[b]\r\n");
    EXPECT_EQ(set("[a]\nx=1", "a", "k", "v"), "[a]\nx=1\nk=v\n");
}

TEST(IniWriter, NewSectionGoesAtTheEndAfterAnEmptyLine) {
    EXPECT_EQ(set("[a]\r\nx=1\r\n", "b", "k", "v"), "[a]\r\nx=1\r\n\r\n[b]\r\nk=v\r\n");
    EXPECT_EQ(set("[a]\nx=1\n\n", "b", "k", "v"), "[a]\nx=1\n\n[b]\nk=v\n");
    EXPECT_EQ(set("[a]\nx=1", "b", "k", "v"), "[a]\nx=1\n\n[b]\nk=v\n");
    EXPECT_EQ(set("", " b ", " k ", " v"), "[b]\nk= v\n");
    EXPECT_EQ(set("", "b", "k", "v", "\r\n"), "[b]\r\nk=v\r\n");
    EXPECT_EQ(set("\xEF\xBB\xBF", "b", "k", "v"), "\xEF\xBB\xBF[b]\nk=v\n");
}

TEST(IniWriter, DuplicatesEditTheFirstSectionAndKey) {
    EXPECT_EQ(set("[s]\nk=1\nk=2\n[S]\nk=3\n", "s", "K", "9"), "[s]\nk=9\nk=2\n[S]\nk=3\n");
    EXPECT_EQ(set("[s]\n[s]\nk=3\n", "s", "k", "9"), "[s]\nk=9\n[s]\nk=3\n");
}

TEST(IniWriter, Deleting) {
    const std::string f = "[a]\nx=1\ny=2\n\n[b]\nz=3\n";
    EXPECT_EQ(ini::apply_edit(f, {EditKind::DeleteKey, "A", "X", ""}, "\n"),
              "[a]\ny=2\n\n[b]\nz=3\n");
    EXPECT_EQ(ini::apply_edit(f, {EditKind::DeleteKey, "a", "none", ""}, "\n"), f);
    EXPECT_EQ(ini::apply_edit(f, {EditKind::DeleteSection, "a", "", ""}, "\n"), "[b]\nz=3\n");
    EXPECT_EQ(ini::apply_edit(f, {EditKind::DeleteSection, "B", "", ""}, "\n"),
              "[a]\nx=1\ny=2\n\n");
    EXPECT_EQ(ini::apply_edit(f, {EditKind::DeleteSection, "c", "", ""}, "\n"), f);
}

TEST(IniWriter, KeepsUntouchedBytesAndCutsWrittenTextsAtLineBreaks) {
    using namespace std::string_literals;
    const std::string f = "\xFF\xFE junk \0 here\n[s]\nk=1\n\xC3\x28\n"s;
    EXPECT_EQ(set(f, "s", "k", "2"), "\xFF\xFE junk \0 here\n[s]\nk=2\n\xC3\x28\n"s);
    EXPECT_EQ(set("[s]\n", "s", "k", "one\r\n[evil]"), "[s]\nk=one\n");
    EXPECT_EQ(set("[s]\n", "s", "k", "a\0b"s), "[s]\nk=a\n");
    EXPECT_EQ(set("[s]\nx=1\r\n", "s", "k", "v"), "[s]\nx=1\r\nk=v\r\n");  // break above it
    const std::string huge(1 << 20, 'h');
    EXPECT_EQ(set("[s]\nk=" + huge + "\n", "s", "k", "v"), "[s]\nk=v\n");
}

TEST(IniWriter, WrittenValuesReadBack) {
    std::string f;
    f = set(f, "One", "a", "1");
    f = set(f, "Two", "b", "\"quoted\"");
    f = set(f, "one", "c", "3");
    EXPECT_EQ(f, "[One]\na=1\nc=3\n\n[Two]\nb=\"quoted\"\n");
    EXPECT_EQ(read(f, "two", "b"), "quoted");
    EXPECT_EQ(read(f, "one", "c"), "3");
}

// --- Files and the cache --------------------------------------------------------------------

TEST(IniFiles, WriteCreatesAndReadSeesChangesOfEqualSize) {
    ini::clear_cache();
    MemoryFiles files;
    ini::WriteFailure failure;
    ASSERT_TRUE(
        ini::write_ini(files, "a.ini", {EditKind::SetValue, "s", "k", "1"}, "\r\n", failure));
    EXPECT_EQ(files.files["a.ini"], "[s]\r\nk=1\r\n");
    EXPECT_EQ(ini::read_ini(files, "a.ini", "s", "k", "d"), "1");
    files.files["a.ini"] = "[s]\r\nk=2\r\n";  // same size, no time: compared by content
    EXPECT_EQ(ini::read_ini(files, "a.ini", "s", "k", "d"), "2");
    ASSERT_TRUE(ini::write_ini(files, "a.ini", {EditKind::SetValue, "s", "k", "3"}, "\n", failure));
    EXPECT_EQ(ini::read_ini(files, "a.ini", "s", "k", "d"), "3");
    ASSERT_TRUE(
        ini::write_ini(files, "none.ini", {EditKind::DeleteKey, "s", "k", ""}, "\n", failure));
    EXPECT_EQ(files.files.count("none.ini"), 0u);
}

class IniRealFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        dir = std::filesystem::temp_directory_path() /
              ("quiller-ini-" + std::to_string(std::random_device{}()));
        std::filesystem::create_directories(dir);
        platform = make_platform();
        ini::clear_cache();
    }
    void TearDown() override { std::filesystem::remove_all(dir); }
    std::string path(const std::string& name) { return (dir / name).string(); }
    void write(const std::string& name, const std::string& bytes) {
        std::ofstream(path(name), std::ios::binary) << bytes;
    }
    std::filesystem::path dir;
    Platform platform;
};

TEST_F(IniRealFiles, DirectoriesAndUnreadableFiles) {
    FileSystem& files = *platform.files;
    std::filesystem::create_directories(dir / "sub.ini");
    EXPECT_EQ(ini::read_ini(files, path("sub.ini"), "s", "k", "d"), "d");
    ini::WriteFailure failure;
    EXPECT_FALSE(
        ini::write_ini(files, path("sub.ini"), {EditKind::SetValue, "s", "k", "v"}, "\n", failure));
    EXPECT_TRUE(failure.reading);
    EXPECT_FALSE(ini::write_ini(files, path("no/dir.ini"), {EditKind::SetValue, "s", "k", "v"},
                                "\n", failure));
    EXPECT_FALSE(failure.reading);
    EXPECT_NE(failure.error, 0);
}

TEST_F(IniRealFiles, FreshFileChangedWithinTheSameSecondIsReread) {
    FileSystem& files = *platform.files;
    write("a.ini", "[s]\nk=1\n");
    EXPECT_EQ(ini::read_ini(files, path("a.ini"), "s", "k", "d"), "1");
    const auto time = std::filesystem::last_write_time(path("a.ini"));
    write("a.ini", "[s]\nk=2\n");
    std::filesystem::last_write_time(path("a.ini"), time);
    EXPECT_EQ(ini::read_ini(files, path("a.ini"), "s", "k", "d"), "2");
}

// Many reads of one large file after a first call, as a script's loop makes them (the time they
// take is measured by bench/ini.sh, not here).
void read_many(FileSystem& files, const std::string& big) {
    EXPECT_EQ(ini::read_ini(files, big, "section999", "key8", "d"), "value 9998");
    for (int i = 0; i < 200; ++i) {
        const int s = (i * 37) % 1000;
        EXPECT_EQ(ini::read_ini(files, big, "SECTION" + std::to_string(s), "key3", "d"),
                  "value " + std::to_string(s * 10 + 3));
    }
}

TEST_F(IniRealFiles, RepeatedReadsOfALargeFileAnswerFromTheCache) {
    std::string big;
    for (int s = 0; s < 1000; ++s) {
        big += "[Section" + std::to_string(s) + "]\n";
        for (int k = 0; k < 9; ++k)
            big += "Key" + std::to_string(k) + "=value " + std::to_string(s * 10 + k) + "\n";
    }
    write("big.ini", big);
    read_many(*platform.files, path("big.ini"));  // just written: bytes compared each call
    std::filesystem::last_write_time(
        path("big.ini"), std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    read_many(*platform.files, path("big.ini"));  // settled: size and time are enough
}

// --- The statements through the engine ------------------------------------------------------

TEST(IniStatements, WriteReadAndListThroughScripts) {
    ini::clear_cache();
    Harness h;
    h.files->files["app.ini"] = "; settings\r\n[Main]\r\nName = Ada\r\nColour=red\r\n";
    const int status = h.run(
        "sub main\n"
        "  writeini app.ini main name Grace\n"
        "  writeini app.ini Extra \"key one\" 'value one'\n"
        "  writeini app.ini main colour {delete}\n"
        "  writeini app.ini main empty\n"
        "  set $v$ readini app.ini MAIN NAME none\n"
        "  print \"$v$\"\n"
        "  readinisection app.ini extra\n"
        "  print \"$readinisection[0]$|$readinisection[1]$\"\n"
        "  writeini app.ini Extra \"\"\n"
        "  readinisection app.ini extra\n"
        "  print \"$readinisection[0]$\"\n"
        "endsub\n");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(h.files->files["app.ini"], "; settings\r\n[Main]\r\nName = Grace\r\nempty=\r\n\r\n");
    ASSERT_EQ(h.host.printed.size(), 3u);
    EXPECT_EQ(h.host.printed[0], "Grace");
    EXPECT_EQ(h.host.printed[1], "1|key one=value one");
    EXPECT_EQ(h.host.printed[2], "0");
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(IniStatements, ReadIniSectionReportsAFileItCantOpen) {
    Harness h;
    h.run("sub main\n  readinisection missing.ini main\n  print $readinisection[0]$\nendsub\n");
    ASSERT_EQ(h.host.errors.size(), 1u);
    EXPECT_NE(h.host.errors[0].text.find("(ReadIniSection) Couldn't open 'missing.ini'"),
              std::string::npos);
    ASSERT_EQ(h.host.printed.size(), 1u);
    EXPECT_EQ(h.host.printed[0], "0");
}

}  // namespace
}  // namespace quiller::testing
