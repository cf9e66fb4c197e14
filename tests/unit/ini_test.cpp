// INI files at the byte level, for what scripts can't show (tests/scripts/ini_profile.prg and
// ini_large.prg cover the statements): syntax corners of the profile reader, NUL bytes, length
// limits, junk and huge lines, the line reader's prefix rules and threshold, exact bytes written
// by the profile writer, and the cache.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>

#include "scripted_host.hpp"
#include "os/ini_profile.hpp"

namespace quiller::testing {
namespace {

using namespace std::string_literals;
using ini::EditKind;

std::string read(std::string_view bytes, std::string_view section, std::string_view key,
                 std::string_view fallback = "DEF") {
    return ini::profile_string(ini::parse_profile(bytes), section, key, fallback);
}

// A file of at least `size` bytes: `head`, filler sections, then `tail`.
std::string large_file(std::string_view head, std::string_view tail, std::size_t size = 70000) {
    std::string s(head);
    for (int i = 0; s.size() + tail.size() < size; ++i)
        s += "[filler" + std::to_string(i) + "]\nsome=value of the filler section\n";
    return s + std::string(tail);
}

std::string random_bytes(std::size_t size, unsigned seed) {
    std::mt19937 rng(seed);
    std::string junk(size, '\0');
    for (char& c : junk) c = static_cast<char>(rng());
    return junk;
}

// --- The profile reader ---------------------------------------------------------------------

// Full case folding ("ß" = "SS") is POSIX-only (see tests/win32/posix_expectations.cmake).
TEST(IniProfileReader, CaseBlindNamesAndBlanks) {
    EXPECT_EQ(read("[  Main Section ]\n  Name   =   Ada  \n", "MAIN SECTION", " name "), "Ada");
    EXPECT_EQ(read("[Größe]\nÄpfel=1\n", "GRÖSSE", "äpfel"), "1");
}

TEST(IniProfileReader, SyntaxCorners) {
    const std::string dup = "[s]\nk=1\nk=2\n[S]\nk=3\nonly=4\n";
    const std::string comments = "k=outside\n[s]\n; k=comment\n  ;k=indented\nk=real\n";
    const std::string quotes = "[q]\nm=\"mixed'\none=\"\ninner=\"a\"b\"\n";
    const struct {
        std::string file, section, key, expected;
    } cases[] = {
        {dup, "s", "k", "1"},  // first section, first key
        {dup, "s", "only", "DEF"},
        {comments, "s", "k", "real"},  // keys outside sections belong to none
        {comments, "s", ";k", "DEF"},
        {"[s]\n=empty name\n", "s", "", "empty name"},
        {"[s]\n\tTab\t=\tx\t\n", "s", "tab", "x"},
        {"[a]b]\nk=1\n", "a]b", "k", "1"},  // the name ends at the last bracket
        {"[s]\n[k=1\nk=2\n", "s", "[k", "1"},
        {quotes, "q", "m", "\"mixed'"},
        {quotes, "q", "one", "\""},
        {quotes, "q", "inner", "a\"b"},
        {"[s]\rk=cr", "s", "k", "cr"},
        {"\xEF\xBB\xBF[s]\nk=bom", "s", "k", "bom"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(read(c.file, c.section, c.key), c.expected) << c.file << " " << c.key;
}

TEST(IniProfileReader, NulLengthLimitJunkAndHugeLines) {
    EXPECT_EQ(read("[s]\nk=ab\0cd\n"s, "s", "k"), "ab");
    EXPECT_EQ(read("[s]\nk=\"ab\0cd\"\n"s, "s", "k"), "\"ab");
    EXPECT_EQ(read("[s\0x]\nk=1\n"s, "s\0x"s, "k"), "1");
    const std::string long_value(300, 'v');
    EXPECT_EQ(read("[s]\nk=" + long_value + "\n", "s", "k"), std::string(254, 'v'));
    EXPECT_EQ(read("", "s", "k", long_value), std::string(254, 'v'));
    std::string accents;  // the limit counts characters
    for (int i = 0; i < 300; ++i) accents += "\xC3\xA9";
    EXPECT_EQ(read("[s]\nk=" + accents + "\n", "s", "k"), accents.substr(0, 508));

    (void)read(random_bytes(60000, 7), "s", "k");
    const std::string huge(1 << 20, 'x');
    EXPECT_EQ(read("[s]\nk=" + huge + "\nj=2", "s", "j"), "2");
    EXPECT_EQ(read("[s]\nk=" + huge, "s", "k"), std::string(254, 'x'));
    EXPECT_EQ(read("[" + huge + "]\nk=1", huge, "k"), "1");
}

// --- The line reader ------------------------------------------------------------------------

TEST(IniLineReader, PrefixRules) {
    const std::string main = "[Main]tail\nKey= spaced value \nsp = x\n";
    const std::string dup = "[s]\nkeyword=long\nkey=short\n[s]\nother=1\n";
    const struct {
        std::string file, section, key;
        std::optional<std::string> expected;
    } cases[] = {
        {main, "main", "KEY", " spaced value "},
        {main, "main", "sp", std::nullopt},  // blanks before "="
        {dup, "S", "key", "short"},
        {dup, "s", "other", std::nullopt},  // only the first section
        {" [s]\nk=1\n", "s", "k", std::nullopt},
        {"[Ärger]\nÖl=x\n", "äRGER", "öl", "x"},
    };
    for (const auto& c : cases) {
        const auto value = ini::line_reader_value(ini::index_lines(c.file), c.section, c.key);
        EXPECT_EQ(value ? std::optional<std::string>(*value) : std::nullopt, c.expected)
            << c.file << " " << c.key;
    }
}

TEST(IniLineReader, ThresholdJunkAndHugeLines) {
    MemoryFiles files;
    const std::string small = large_file("[s]\nk = \"padded\" \n", "", 63900);
    files.files["small.ini"] = small + std::string(63999 - small.size(), ';');
    files.files["large.ini"] = small + std::string(64000 - small.size(), ';');
    EXPECT_EQ(ini::read_ini(files, "small.ini", "s", "k", "d "), "padded");
    EXPECT_EQ(ini::read_ini(files, "large.ini", "s", "k", "d "), "d ");

    files.files["junk.ini"] = random_bytes(200000, 11);
    EXPECT_EQ(ini::read_ini(files, "junk.ini", "s", "k", "d"), "d");
    files.files["huge.ini"] = "[s]\n" + std::string(1 << 20, 'z') + "\nk=v";
    EXPECT_EQ(ini::read_ini(files, "huge.ini", "s", "k", "d"), "v");
    files.files["nul.ini"] = large_file("[s]\nk=a\0b\n"s, "");
    EXPECT_EQ(ini::read_ini(files, "nul.ini", "s", "k", "d"), "a\0b"s);
}

// --- Section listing ------------------------------------------------------------------------

TEST(IniSectionEntries, EntriesAndHeaderMatching) {
    using Entries = std::vector<std::string>;
    EXPECT_EQ(ini::section_entries("[other]\nx=0\n[Main]\n name = Ada \n;comment=1\nno equals\n"
                                   " k=v=w\n=e\n [x]\ny=1\n[z]\n",
                                   "MAIN"),
              (Entries{"name=Ada", "k=v=w", "=e", "y=1"}));
    EXPECT_EQ(ini::section_entries("[Main] \nk=1\n", "main"), Entries{});
    EXPECT_EQ(ini::section_entries("[ Main]\nk=1\n", "main"), Entries{});
    EXPECT_EQ(ini::section_entries("[MAIN]\r\nk=1\r\n[n]\r\nj=2\r\n", "main"), Entries{"k=1"});
}

// --- The profile writer ---------------------------------------------------------------------

TEST(IniWriter, EditsKeepEveryOtherByte) {
    const std::string crlf = "; head\r\n[Main]\r\n  UserName = old \r\nOther=1\r\n";
    const std::string two = "[a]\nx=1\ny=2\n\n[b]\nz=3\n";
    constexpr auto Set = EditKind::SetValue, DelKey = EditKind::DeleteKey,
                   DelSection = EditKind::DeleteSection;
    const struct {
        std::string before;
        EditKind kind;
        std::string section, key, value, after, brk = "\n";
    } cases[] = {
        // In place, keeping the spelling, the blanks before the value and the breaks.
        {crlf, Set, "main", "username", "new",
         "; head\r\n[Main]\r\n  UserName = new\r\nOther=1\r\n"},
        {crlf, Set, "main", "other", "1", crlf},
        {"[s]\nk=1", Set, "s", "k", "22", "[s]\nk=22"},
        // A new key after the section's last non-empty line.
        {"[a]\nx=1\n; note\n\n\n[b]\ny=2\n", Set, "A", "new", "v",
         "[a]\nx=1\n; note\nnew=v\n\n\n[b]\ny=2\n"},
        {"[a]\r\n[b]\r\n", Set, "a", "k", "v", "[a]\r\nk=v\r\n[b]\r\n"},
        {"[a]\nx=1", Set, "a", "k", "v", "[a]\nx=1\nk=v\n"},
        {"[s]\nx=1\r\n", Set, "s", "k", "v", "[s]\nx=1\r\nk=v\r\n"},  // the break above it
        // A new section at the end, right after the last line.
        {"[a]\r\nx=1\r\n", Set, "b", "k", "v", "[a]\r\nx=1\r\n[b]\r\nk=v\r\n"},
        {"[a]\nx=1\n\n", Set, "b", "k", "v", "[a]\nx=1\n\n[b]\nk=v\n"},
        {"[a]\nx=1", Set, "b", "k", "v", "[a]\nx=1\n[b]\nk=v\n"},
        {"", Set, " b ", " k ", " v", "[b]\nk= v\n"},
        {"", Set, "b", "k", "v", "[b]\r\nk=v\r\n", "\r\n"},
        {"\xEF\xBB\xBF", Set, "b", "k", "v", "\xEF\xBB\xBF[b]\nk=v\n"},
        // Duplicate sections: the first one.
        {"[s]\n[s]\nk=3\n", Set, "s", "k", "9", "[s]\nk=9\n[s]\nk=3\n"},
        // Deleting.
        {two, DelKey, "A", "X", "", "[a]\ny=2\n\n[b]\nz=3\n"},
        {two, DelKey, "a", "none", "", two},
        {two, DelSection, "a", "", "", "[b]\nz=3\n"},
        {two, DelSection, "B", "", "", "[a]\nx=1\ny=2\n\n"},
        // Written texts end at a line break: no injected lines.
        {"[s]\n", Set, "s", "k", "one\r\n[evil]", "[s]\nk=one\n"},
        {"[s]\n", Set, "s", "k", "a\0b"s, "[s]\nk=a\n"},
        // Bytes that are not UTF-8 and huge lines don't matter.
        {"\xFF\xFE junk \0 here\n[s]\nk=1\n\xC3\x28\n"s, Set, "s", "k", "2",
         "\xFF\xFE junk \0 here\n[s]\nk=2\n\xC3\x28\n"s},
        {"[s]\nk=" + std::string(1 << 20, 'h') + "\n", Set, "s", "k", "v", "[s]\nk=v\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ini::apply_edit(c.before, {c.kind, c.section, c.key, c.value}, c.brk), c.after)
            << c.before << " " << c.section << "/" << c.key;
}

// --- Files and the cache --------------------------------------------------------------------

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

TEST_F(IniRealFiles, WriteIntoAMissingDirectoryFailsWhileReplacing) {
    ini::WriteFailure failure;
    EXPECT_FALSE(ini::write_ini(*platform.files, path("no/dir.ini"),
                                {EditKind::SetValue, "s", "k", "v"}, "\n", failure));
    EXPECT_FALSE(failure.reading);
    EXPECT_NE(failure.error, 0);
}

// A change of equal size within the same second as the last read is seen.
TEST_F(IniRealFiles, FreshFileChangedWithinTheSameSecondIsReread) {
    FileSystem& files = *platform.files;
    write("a.ini", "[s]\nk=1\n");
    EXPECT_EQ(ini::read_ini(files, path("a.ini"), "s", "k", "d"), "1");
    const auto time = std::filesystem::last_write_time(path("a.ini"));
    write("a.ini", "[s]\nk=2\n");
    std::filesystem::last_write_time(path("a.ini"), time);
    EXPECT_EQ(ini::read_ini(files, path("a.ini"), "s", "k", "d"), "2");
}

// Reads of many sections of one large file, just written (bytes compared each call) and then
// settled (size and time are enough), must give the values of the right sections.
TEST_F(IniRealFiles, RepeatedReadsOfALargeFileAnswerFromTheCache) {
    std::string big;
    for (int s = 0; s < 1000; ++s) {
        big += "[Section" + std::to_string(s) + "]\n";
        for (int k = 0; k < 9; ++k)
            big += "Key" + std::to_string(k) + "=" + std::to_string(s * 10 + k) + "\n";
    }
    write("big.ini", big);
    for (const auto age : {std::chrono::hours(0), std::chrono::hours(1)}) {
        std::filesystem::last_write_time(path("big.ini"),
                                         std::filesystem::file_time_type::clock::now() - age);
        for (int s = 999; s > 0; s -= 37)
            EXPECT_EQ(ini::read_ini(*platform.files, path("big.ini"), "SECTION" + std::to_string(s),
                                    "key3", "d"),
                      std::to_string(s * 10 + 3));
    }
}

}  // namespace
}  // namespace quiller::testing
