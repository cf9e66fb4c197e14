// The text helpers over every Windows-1252 character and a language-sensitive letter; the cases
// one by one are in cases/text.tsv.
#include "value/text.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace text = quiller::text;

namespace {

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

TEST(TextCase, EveryWindows1252CharacterSurvivesCaseMapping) {
    for (int b = 0x80; b < 0x100; ++b) {
        const std::string c = text::windows1252_to_utf8(std::string(1, static_cast<char>(b)));
        const std::string lower = text::to_lower(c);
        const std::string upper = text::to_upper(c);
        EXPECT_TRUE(text::is_valid_utf8(lower) && text::is_valid_utf8(upper)) << "byte " << b;
        EXPECT_TRUE(text::iequals(lower, upper) && text::iequals(c, upper)) << "byte " << b;
    }
}

// The mapping is language-neutral; whatever "İ" gives must be well-formed and start with i.
TEST(TextCase, DottedCapitalI) {
    const std::string lower = text::to_lower("İstanbul");
    EXPECT_TRUE(text::is_valid_utf8(lower));
    EXPECT_EQ(lower.front(), 'i');
    EXPECT_EQ(lower.substr(lower.size() - 7), "stanbul");
    EXPECT_TRUE(text::is_valid_utf8(text::to_upper("ıi")));
}

}  // namespace
