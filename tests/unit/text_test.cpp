// Unit tests for the shared text helpers (common/text.hpp): encodings, case mapping, comparing,
// finding and replacing without case, over ill-formed bytes and mappings that change lengths.
#include "value/text.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace text = quiller::text;

namespace {

constexpr auto npos = std::string_view::npos;

// Expectations that rely on full (one-to-many) case mappings, which the Win32 NLS tables lack.
#ifdef _WIN32
constexpr bool kFullCaseMapping = false;
#else
constexpr bool kFullCaseMapping = true;
#endif

// --- Encoding -------------------------------------------------------------------------------

TEST(TextEncoding, Utf8Validity) {
    for (const char* valid : {"", "Grüße €", "\xF0\x9F\x98\x80"})
        EXPECT_TRUE(text::is_valid_utf8(valid)) << valid;
    for (const char* bad : {
             "caf\xE9",           // Latin-1 byte
             "\xC3",              // truncated at the end
             "\xC3x",             // lead byte without continuation
             "\x80",              // lone continuation byte
             "\xC0\xAF",          // overlong "/"
             "\xED\xA0\x80",      // surrogate half
             "\xF4\x90\x80\x80",  // above U+10FFFF
             "\xF0\x9F\x98",      // four-byte form cut short
         })
        EXPECT_FALSE(text::is_valid_utf8(bad)) << bad;
}

TEST(TextEncoding, ScriptTextFallsBackToWindows1252) {
    // Valid UTF-8 is kept, a byte-order mark included.
    EXPECT_EQ(text::decode_script_text("\xEF\xBB\xBFprint Grüße"), "\xEF\xBB\xBFprint Grüße");
    // The five undefined bytes become the C1 controls of the same value.
    EXPECT_EQ(text::decode_script_text("\x81\x8D\x8F\x90\x9D"),
              "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D");
    // One bad byte makes the whole text Windows-1252, a UTF-8 "é" before it included.
    EXPECT_EQ(text::decode_script_text("\xC3\xA9 \xE9"), "Ã© é");
}

TEST(TextEncoding, EveryWindows1252ByteIsADistinctCharacter) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    const std::string decoded = text::windows1252_to_utf8(all);
    ASSERT_TRUE(text::is_valid_utf8(decoded));
    ASSERT_EQ(text::char_count(decoded), 256u);
    std::set<std::string> distinct;
    for (std::size_t i = 0; i < 256; ++i) {
        const std::size_t begin = text::byte_offset_of_char(decoded, i);
        distinct.insert(decoded.substr(begin, text::byte_offset_of_char(decoded, i + 1) - begin));
    }
    EXPECT_EQ(distinct.size(), 256u);
}

TEST(TextEncoding, CharacterCountsAndOffsets) {
    EXPECT_EQ(text::char_count("a\xF0\x9F\x98\x80z"), 3u);
    EXPECT_EQ(text::char_count("a\xE9z"), 3u);  // each ill-formed byte is a character
    EXPECT_EQ(text::char_count("\xE2\x82"), 2u);
    const std::string s = "aé€z";  // 1 + 2 + 3 + 1 bytes
    const std::size_t offsets[] = {0, 1, 3, 6, s.size()};
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(text::byte_offset_of_char(s, i), offsets[i]);
    EXPECT_EQ(text::byte_offset_of_char(s, 99), s.size());
    EXPECT_EQ(text::byte_offset_of_char("\xE9\xE9x", 2), 2u);
}

// --- Case ----------------------------------------------------------------------------------

TEST(TextCase, LowerAndUpper) {
    const struct {
        const char *in, *lower, *upper;
    } cases[] = {
        {"Set $Total$ = 10 + x", "set $total$ = 10 + x", "SET $TOTAL$ = 10 + X"},
        {"äÖü αβΓ", "äöü αβγ", "ÄÖÜ ΑΒΓ"},
        // Ill-formed bytes pass through, a cut-off "€" at the end included.
        {"é\xFFÜ", "é\xFFü", "É\xFFÜ"},
        {"Äx\xE2\x82", "äx\xE2\x82", "ÄX\xE2\x82"},
        {"\x80\xBF\xC0\xAF", "\x80\xBF\xC0\xAF", "\x80\xBF\xC0\xAF"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(text::to_lower(c.in), c.lower) << c.in;
        EXPECT_EQ(text::to_upper(c.in), c.upper) << c.in;
    }
    EXPECT_EQ(text::to_upper("Größe: 10 cm"), kFullCaseMapping ? "GRÖSSE: 10 CM" : "GRÖßE: 10 CM");
    if (kFullCaseMapping) {
        EXPECT_EQ(text::to_lower("ΟΔΥΣΣΕΥΣ"), "οδυσσευς");  // final sigma
    }
    // The mapping is language-neutral; whatever "İ" gives must be well-formed and start with i.
    const std::string lower = text::to_lower("İstanbul");
    EXPECT_TRUE(text::is_valid_utf8(lower));
    EXPECT_EQ(lower.front(), 'i');
    EXPECT_EQ(lower.substr(lower.size() - 7), "stanbul");
    EXPECT_TRUE(text::is_valid_utf8(text::to_upper("ıi")));
}

TEST(TextCase, EveryWindows1252CharacterSurvivesCaseMapping) {
    for (int b = 0x80; b < 0x100; ++b) {
        const std::string c = text::windows1252_to_utf8(std::string(1, static_cast<char>(b)));
        const std::string lower = text::to_lower(c);
        const std::string upper = text::to_upper(c);
        EXPECT_TRUE(text::is_valid_utf8(lower) && text::is_valid_utf8(upper)) << "byte " << b;
        EXPECT_TRUE(text::iequals(lower, upper) && text::iequals(c, upper)) << "byte " << b;
    }
}

TEST(TextCompare, IgnoresCase) {
    const struct {
        const char *a, *b;
        bool equal, needs_full_folding = false;
    } cases[] = {
        {"abc", "ABCd", false},
        {"Ärger", "äRGER", true},
        {"ä", "a", false},
        {"\xE2\x84\xAA", "k", true},  // KELVIN SIGN
        {"\xC5\xBF", "S", true},      // LATIN SMALL LETTER LONG S
        {"Straße", "STRASSE", true, true},
        {"ﬁle", "FILE", true, true},  // U+FB01 ligature
        // Ill-formed bytes match only themselves: no Latin-1 folding of raw bytes.
        {"A\xE9", "a\xE9", true},
        {"a\xE9", "aé", false},
        {"a\xE9", "a\xC9", false},
    };
    for (const auto& c : cases) {
        if (!kFullCaseMapping && c.needs_full_folding) continue;
        EXPECT_EQ(text::iequals(c.a, c.b), c.equal) << c.a << " " << c.b;
    }
}

TEST(TextFind, PositionsAreBytesOfTheHaystack) {
    const std::string ill =
        "\xE9"
        "abc\xE9"
        "ABC";
    const struct {
        std::string hay, needle;
        std::size_t from, expected;
        bool needs_full_folding = false;
    } cases[] = {
        {"abcABC", "abc", 1, 3},
        {"abc", "abcd", 0, npos},
        {"abc", "", 3, 3},
        {"abc", "", 4, npos},
        {"abc", "c", 99, npos},
        {"€uro €URO", "€Uro", 1, std::string("€uro ").size()},
        // U+023A (2 bytes) lower-cases to U+2C65 (3 bytes).
        {"x\xC8\xBAy\xC8\xBA", "\xE2\xB1\xA5", 2, 4},
        {"300 \xE2\x84\xAA", "k", 0, 4},  // an ASCII needle finds what folds to it
        // Only whole characters match.
        {"Maße", "SS", 0, 2, true},
        {"MASSE", "ß", 0, 2, true},
        {"Maße", "s", 0, npos, true},   // inside the folding of "ß"
        {"Maße", "as", 0, npos, true},  // would end inside "ß"
        {ill, "abc", 2, 5},
        {ill,
         "\xE9"
         "a",
         0, 0},
        {ill, "é", 0, npos},
    };
    for (const auto& c : cases) {
        if (!kFullCaseMapping && c.needs_full_folding) continue;
        EXPECT_EQ(text::ifind(c.hay, c.needle, c.from), c.expected)
            << c.hay << " / " << c.needle << " from " << c.from;
    }
}

TEST(TextReplace, EveryOccurrenceLeftToRight) {
    const struct {
        std::string text, search, replacement, expected;
        std::size_t count;
        bool needs_full_folding = false;
    } cases[] = {
        {"aaa", "AA", "x", "xa", 1},  // no overlaps
        {"ab", "a", "aa", "aab", 1},  // the replacement is not searched again
        {"keep", "", "!", "keep", 0},
        {"Ärger über ÄRGER", "ärger", "Freude", "Freude über Freude", 2},
        {"x\xC8\xBAy", "\xE2\xB1\xA5", "-", "x-y", 1},
        {"x\xE9y X", "x", "z", "z\xE9y z", 2},
        {"Fuß FUSS fuss", "fuß", "Foot", "Foot Foot Foot", 3, true},
        {"Maße", "s", "z", "Maße", 0, true},
    };
    for (const auto& c : cases) {
        if (!kFullCaseMapping && c.needs_full_folding) continue;
        std::string s = c.text;
        EXPECT_EQ(text::replace_all(s, c.search, c.replacement), c.count) << c.text;
        EXPECT_EQ(s, c.expected) << c.text;
    }
}

// --- Small operations ----------------------------------------------------------------------

TEST(TextSmall, TrimAndUnquote) {
    EXPECT_EQ(text::trim("\ta b\t "), "\ta b\t");  // blanks only
    // The first and the last character go when the first is a delimiter, whatever the last is.
    const struct {
        const char *in, *out;
    } cases[] = {
        {"$x", ""},
        {"\"abc", "ab"},
        {"$", "$"},    // too short
        {"x$", "x$"},  // no opening delimiter
        {"(a)", "(a)"},
        {"$éé", "é"},             // a multi-byte last character goes whole
        {"$a\xE2\x82", "a\xE2"},  // ill-formed tail: one byte
    };
    for (const auto& c : cases) EXPECT_EQ(text::unquote(c.in), c.out) << c.in;
}

TEST(TextSmall, SplitPath) {
    const auto check = [](std::string_view path, std::string_view dir, std::string_view file) {
        const text::PathParts split = text::split_path(path);
        EXPECT_EQ(split.directory, dir) << "path: " << path;
        EXPECT_EQ(split.file, file) << "path: " << path;
    };
    check("C:\\Data\\Scan\\list.txt", "C:\\Data\\Scan", "list.txt");
    check("list.txt", "", "list.txt");
    check("\\list.txt", "", "list.txt");
    check("C:\\Data\\", "C:\\Data", "");
    check("\\\\server\\share\\Grüße.txt", "\\\\server\\share", "Grüße.txt");
#ifdef _WIN32
    check("a/b\\c/d", "a/b", "c/d");
#else
    check("a/b\\c/d", "a/b\\c", "d");
    check("a\\b/c\\d", "a\\b/c", "d");
#endif
}

}  // namespace
