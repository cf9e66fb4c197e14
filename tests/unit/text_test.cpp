// Unit tests for the shared text helpers (common/text.hpp).
#include "common/text.hpp"

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

TEST(TextEncoding, RecognisesWellFormedUtf8) {
    EXPECT_TRUE(text::is_valid_utf8(""));
    EXPECT_TRUE(text::is_valid_utf8("plain ascii"));
    EXPECT_TRUE(text::is_valid_utf8("Grüße €"));
    EXPECT_TRUE(text::is_valid_utf8("\xF0\x9F\x98\x80"));  // U+1F600, four bytes
}

TEST(TextEncoding, RejectsIllFormedUtf8) {
    EXPECT_FALSE(text::is_valid_utf8("caf\xE9"));           // Latin-1 byte
    EXPECT_FALSE(text::is_valid_utf8("\xC3"));              // truncated at the end
    EXPECT_FALSE(text::is_valid_utf8("\xC3x"));             // lead byte without continuation
    EXPECT_FALSE(text::is_valid_utf8("\x80"));              // lone continuation byte
    EXPECT_FALSE(text::is_valid_utf8("\xC0\xAF"));          // overlong "/"
    EXPECT_FALSE(text::is_valid_utf8("\xED\xA0\x80"));      // surrogate half
    EXPECT_FALSE(text::is_valid_utf8("\xF4\x90\x80\x80"));  // above U+10FFFF
    EXPECT_FALSE(text::is_valid_utf8("\xF0\x9F\x98"));      // four-byte form cut short
}

TEST(TextEncoding, KeepsValidUtf8Untouched) {
    EXPECT_EQ(text::decode_script_text("set $x$ = Grüße"), "set $x$ = Grüße");
    // A byte-order mark is content like any other; nothing is stripped.
    EXPECT_EQ(text::decode_script_text("\xEF\xBB\xBFprint"), "\xEF\xBB\xBFprint");
}

TEST(TextEncoding, FallsBackToWindows1252) {
    EXPECT_EQ(text::decode_script_text("\x80"), "€");
    EXPECT_EQ(text::decode_script_text("caf\xE9"), "café");
    EXPECT_EQ(text::decode_script_text("\x93quoted\x94 \x96 \x85"), "“quoted” – …");
    EXPECT_EQ(text::decode_script_text("\x9F\xFF"), "Ÿÿ");
    // The five undefined bytes become the C1 controls of the same value.
    EXPECT_EQ(text::decode_script_text("\x81\x8D\x8F\x90\x9D"),
              "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D");
}

TEST(TextEncoding, OneBadByteDecodesTheWholeTextAsWindows1252) {
    // "é" in UTF-8 next to a Latin-1 "é": the file is not UTF-8, so both bytes of the first
    // one are read as Windows-1252 characters too.
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
        const std::size_t end = text::byte_offset_of_char(decoded, i + 1);
        distinct.insert(decoded.substr(begin, end - begin));
    }
    EXPECT_EQ(distinct.size(), 256u);
}

TEST(TextEncoding, CountsCharactersNotBytes) {
    EXPECT_EQ(text::char_count(""), 0u);
    EXPECT_EQ(text::char_count("Grüße"), 5u);
    EXPECT_EQ(text::char_count("a\xF0\x9F\x98\x80z"), 3u);
    // Each ill-formed byte is a character of its own.
    EXPECT_EQ(text::char_count("a\xE9z"), 3u);
    EXPECT_EQ(text::char_count("\xE2\x82"), 2u);
}

TEST(TextEncoding, ByteOffsetOfCharacter) {
    const std::string s = "aé€z";  // 1 + 2 + 3 + 1 bytes
    EXPECT_EQ(text::byte_offset_of_char(s, 0), 0u);
    EXPECT_EQ(text::byte_offset_of_char(s, 1), 1u);
    EXPECT_EQ(text::byte_offset_of_char(s, 2), 3u);
    EXPECT_EQ(text::byte_offset_of_char(s, 3), 6u);
    EXPECT_EQ(text::byte_offset_of_char(s, 4), s.size());
    EXPECT_EQ(text::byte_offset_of_char(s, 99), s.size());
    EXPECT_EQ(text::byte_offset_of_char("\xE9\xE9x", 2), 2u);
}

// --- Case ----------------------------------------------------------------------------------

TEST(TextCase, AsciiText) {
    EXPECT_EQ(text::to_lower("Set $Total$ = 10 + X"), "set $total$ = 10 + x");
    EXPECT_EQ(text::to_upper("Set $Total$ = 10 + x"), "SET $TOTAL$ = 10 + X");
    EXPECT_EQ(text::to_lower(""), "");
}

TEST(TextCase, GermanUmlautsAndSharpS) {
    EXPECT_EQ(text::to_lower("ÄÖÜ"), "äöü");
    EXPECT_EQ(text::to_upper("äöü"), "ÄÖÜ");
    EXPECT_EQ(text::to_lower("Straße"), "straße");
    if (kFullCaseMapping) {
        EXPECT_EQ(text::to_upper("Straße"), "STRASSE");
    }
}

TEST(TextCase, Greek) {
    EXPECT_EQ(text::to_upper("αβγ"), "ΑΒΓ");
    EXPECT_EQ(text::to_lower("ΑΒΓ"), "αβγ");
    // ICU picks the final sigma at the end of a word.
    if (kFullCaseMapping) {
        EXPECT_EQ(text::to_lower("ΟΔΥΣΣΕΥΣ"), "οδυσσευς");
    }
}

TEST(TextCase, TurkishDottedCapitalI) {
    // The mapping is language-neutral; whatever it gives must be well-formed and start with i.
    const std::string lower = text::to_lower("İstanbul");
    EXPECT_TRUE(text::is_valid_utf8(lower));
    EXPECT_EQ(lower.front(), 'i');
    EXPECT_EQ(lower.substr(lower.size() - 7), "stanbul");
    EXPECT_TRUE(text::is_valid_utf8(text::to_upper("ıi")));
}

TEST(TextCase, MixedTextKeepsAsciiPartsExact) {
    EXPECT_EQ(text::to_upper("Größe: 10 cm"), kFullCaseMapping ? "GRÖSSE: 10 CM" : "GRÖßE: 10 CM");
    EXPECT_EQ(text::to_lower("C:\\PROGRAMME\\ÜBER"), "c:\\programme\\über");
}

TEST(TextCase, IllFormedBytesPassThrough) {
    EXPECT_EQ(text::to_lower("AB\xE9"
                             "CD"),
              "ab\xE9"
              "cd");
    EXPECT_EQ(text::to_upper("é\xFFü"), "É\xFFÜ");
    EXPECT_EQ(text::to_lower("ÄX\xE2\x82"), "äx\xE2\x82");  // cut-off "€" at the end
    EXPECT_EQ(text::to_upper("\x80\xBF\xC0\xAF"), "\x80\xBF\xC0\xAF");
}

TEST(TextCase, EveryWindows1252CharacterSurvivesCaseMapping) {
    for (int b = 0x80; b < 0x100; ++b) {
        const std::string c = text::windows1252_to_utf8(std::string(1, static_cast<char>(b)));
        const std::string lower = text::to_lower(c);
        const std::string upper = text::to_upper(c);
        EXPECT_TRUE(text::is_valid_utf8(lower)) << "byte " << b;
        EXPECT_TRUE(text::is_valid_utf8(upper)) << "byte " << b;
        EXPECT_TRUE(text::iequals(lower, upper)) << "byte " << b;
        EXPECT_TRUE(text::iequals(c, upper)) << "byte " << b;
    }
}

TEST(TextCompare, IgnoresCase) {
    EXPECT_TRUE(text::iequals("Quiet", "QUIET"));
    EXPECT_TRUE(text::iequals("", ""));
    EXPECT_TRUE(text::iequals("Ärger", "äRGER"));
    EXPECT_TRUE(text::iequals("ΣΟΦΙΑ", "σοφια"));
    EXPECT_FALSE(text::iequals("abc", "abd"));
    EXPECT_FALSE(text::iequals("abc", "abcd"));
    EXPECT_FALSE(text::iequals("ä", "a"));
}

TEST(TextCompare, FullCaseFolding) {
    if (!kFullCaseMapping) GTEST_SKIP() << "one-to-many folding needs ICU";
    EXPECT_TRUE(text::iequals("Straße", "STRASSE"));
    EXPECT_TRUE(text::iequals("ﬁle", "FILE"));  // U+FB01 ligature
}

TEST(TextCompare, NonAsciiCharactersThatFoldToAscii) {
    EXPECT_TRUE(text::iequals("\xE2\x84\xAA", "k"));  // KELVIN SIGN
    EXPECT_TRUE(text::iequals("\xC5\xBF", "S"));      // LATIN SMALL LETTER LONG S
}

TEST(TextCompare, IllFormedBytesMatchOnlyThemselves) {
    EXPECT_TRUE(text::iequals("A\xE9", "a\xE9"));
    EXPECT_FALSE(text::iequals("a\xE9", "aé"));
    EXPECT_FALSE(text::iequals("a\xE9", "a\xC9"));  // no Latin-1 case folding of raw bytes
}

TEST(TextFind, AsciiPositions) {
    EXPECT_EQ(text::ifind("Hello World", "WORLD"), 6u);
    EXPECT_EQ(text::ifind("abcABC", "abc", 1), 3u);
    EXPECT_EQ(text::ifind("abc", "abcd"), npos);
    EXPECT_EQ(text::ifind("abc", "x"), npos);
    EXPECT_EQ(text::ifind("abc", "", 2), 2u);
    EXPECT_EQ(text::ifind("abc", "", 3), 3u);
    EXPECT_EQ(text::ifind("abc", "", 4), npos);
    EXPECT_EQ(text::ifind("abc", "c", 99), npos);
}

TEST(TextFind, PositionsAreBytesOfTheHaystack) {
    const std::string hay = "Grüße aus Köln";
    const std::size_t pos = text::ifind(hay, "KÖLN");
    EXPECT_EQ(pos, hay.find("Köln"));
    EXPECT_EQ(hay.substr(pos), "Köln");
    EXPECT_EQ(text::ifind("äxÄx", "ä", 1), 3u);
    EXPECT_EQ(text::ifind("€uro €URO", "€Uro", 1), std::string("€uro ").size());
}

TEST(TextFind, CaseMappingThatChangesByteLength) {
    // U+023A (2 bytes) lower-cases to U+2C65 (3 bytes); positions still index the haystack.
    const std::string hay = "x\xC8\xBAy\xC8\xBA";
    EXPECT_EQ(text::ifind(hay, "\xE2\xB1\xA5"), 1u);
    EXPECT_EQ(text::ifind(hay, "\xE2\xB1\xA5Y"), 1u);
    EXPECT_EQ(text::ifind(hay, "\xE2\xB1\xA5", 2), 4u);
    // An ASCII needle still finds characters outside ASCII that fold to it.
    EXPECT_EQ(text::ifind("300 \xE2\x84\xAA", "k"), 4u);
}

TEST(TextFind, MatchesWholeCharactersOnly) {
    if (!kFullCaseMapping) GTEST_SKIP() << "one-to-many folding needs ICU";
    EXPECT_EQ(text::ifind("Maße", "SS"), 2u);
    EXPECT_EQ(text::ifind("MASSE", "ß"), 2u);
    EXPECT_EQ(text::ifind("Maße", "s"), npos);   // no match inside the folding of "ß"
    EXPECT_EQ(text::ifind("Maße", "as"), npos);  // would end inside "ß"
    EXPECT_EQ(text::ifind("Maße", "SSE"), 2u);   // "ß" and "e" whole
}

TEST(TextFind, IllFormedHaystack) {
    const std::string hay =
        "\xE9"
        "abc\xE9"
        "ABC";
    EXPECT_EQ(text::ifind(hay, "ABC"), 1u);
    EXPECT_EQ(text::ifind(hay, "abc", 2), 5u);
    EXPECT_EQ(text::ifind(hay,
                          "\xE9"
                          "a"),
              0u);
    EXPECT_EQ(text::ifind(hay, "é"), npos);
}

// --- Replace -------------------------------------------------------------------------------

struct ReplaceCase {
    std::string text;
    std::string search;
    std::string replacement;
    std::string expected;
    std::size_t count;
};

void expect_replace(const ReplaceCase& c) {
    std::string s = c.text;
    EXPECT_EQ(text::replace_all(s, c.search, c.replacement), c.count) << "in: " << c.text;
    EXPECT_EQ(s, c.expected) << "in: " << c.text;
}

TEST(TextReplace, AsciiText) {
    expect_replace({"a-A-a", "a", "bb", "bb-bb-bb", 3});
    expect_replace({"aaaa", "aa", "x", "xx", 2});
    expect_replace({"aaa", "AA", "x", "xa", 1});  // left to right, no overlaps
    expect_replace({"ab", "a", "aa", "aab", 1});  // the replacement is not searched again
    expect_replace({"5$$ each", "$", "", "5 each", 2});
    expect_replace({"nothing here", "xyz", "!", "nothing here", 0});
    expect_replace({"keep", "", "!", "keep", 0});
    expect_replace({"", "a", "!", "", 0});
}

TEST(TextReplace, UnicodeText) {
    expect_replace({"Ärger über ÄRGER", "ärger", "Freude", "Freude über Freude", 2});
    expect_replace({"€ and €", "€", "EUR", "EUR and EUR", 2});
    expect_replace({"x\xC8\xBAy", "\xE2\xB1\xA5", "-", "x-y", 1});
    expect_replace({"x\xE9y X", "x", "z", "z\xE9y z", 2});
}

TEST(TextReplace, FullCaseFolding) {
    if (!kFullCaseMapping) GTEST_SKIP() << "one-to-many folding needs ICU";
    expect_replace({"Fuß FUSS fuss", "fuß", "Foot", "Foot Foot Foot", 3});
    expect_replace({"Maße", "s", "z", "Maße", 0});
}

// --- Small operations ----------------------------------------------------------------------

TEST(TextSmall, TrimRemovesBlanksOnly) {
    EXPECT_EQ(text::trim("  a b  "), "a b");
    EXPECT_EQ(text::trim("\ta\t"), "\ta\t");
    EXPECT_EQ(text::trim("   "), "");
    EXPECT_EQ(text::trim(""), "");
}

TEST(TextSmall, Unquote) {
    EXPECT_EQ(text::unquote("$x$"), "x");
    EXPECT_EQ(text::unquote("\"a b\""), "a b");
    EXPECT_EQ(text::unquote("'it'"), "it");
    EXPECT_EQ(text::unquote("^up^"), "up");
    EXPECT_EQ(text::unquote("$x"), "");  // the last character goes whatever it is
    EXPECT_EQ(text::unquote("\"abc"), "ab");
    EXPECT_EQ(text::unquote("$"), "$");    // too short
    EXPECT_EQ(text::unquote("x$"), "x$");  // no opening delimiter
    EXPECT_EQ(text::unquote("(a)"), "(a)");
    EXPECT_EQ(text::unquote("\"Grüße\""), "Grüße");
    EXPECT_EQ(text::unquote("$éé"), "é");             // a multi-byte last character goes whole
    EXPECT_EQ(text::unquote("$a\xE2\x82"), "a\xE2");  // ill-formed tail: one byte
}

TEST(TextSmall, SplitPath) {
    const auto check = [](std::string_view path, std::string_view dir, std::string_view file) {
        const text::PathParts parts = text::split_path(path);
        EXPECT_EQ(parts.directory, dir) << "path: " << path;
        EXPECT_EQ(parts.file, file) << "path: " << path;
    };
    check("C:\\Data\\Scan\\list.txt", "C:\\Data\\Scan", "list.txt");
    check("list.txt", "", "list.txt");
    check("\\list.txt", "", "list.txt");
    check("C:\\Data\\", "C:\\Data", "");
    check("\\\\server\\share\\Grüße.txt", "\\\\server\\share", "Grüße.txt");
    check("", "", "");
#ifdef _WIN32
    check("a/b\\c/d", "a/b", "c/d");
#else
    check("a/b\\c/d", "a/b\\c", "d");
    check("a\\b/c\\d", "a\\b/c", "d");
#endif
}

TEST(TextSmall, PathSeparators) {
    EXPECT_TRUE(text::is_path_separator('\\'));
    EXPECT_FALSE(text::is_path_separator(':'));
#ifdef _WIN32
    EXPECT_FALSE(text::is_path_separator('/'));
#else
    EXPECT_TRUE(text::is_path_separator('/'));
#endif
}

TEST(TextSmall, AsciiHelpers) {
    EXPECT_TRUE(text::starts_with_ascii_ci("  ELSEIF x", "elseif"));
    EXPECT_TRUE(text::starts_with_ascii_ci("Quiet", "quiet"));
    EXPECT_FALSE(text::starts_with_ascii_ci("el", "else"));
    EXPECT_FALSE(text::starts_with_ascii_ci("x else", "else"));
    EXPECT_EQ(text::ascii_lower("ÄBC Def"), "Äbc def");  // non-ASCII bytes untouched
    EXPECT_TRUE(text::is_ascii("plain"));
    EXPECT_FALSE(text::is_ascii("naïve"));
}

}  // namespace
