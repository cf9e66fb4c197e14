// Registry export files: both kinds and encodings, every value form, continuations, and
// malformed input that is reported line by line.
#include <gtest/gtest.h>

#include "services/registry_file.hpp"
#include "services/registry_values.hpp"

namespace quiller {
namespace {

using Kind = RegistryFileEntry::Kind;

struct Parsed {
    std::vector<RegistryFileEntry> entries;
    std::vector<std::pair<int, std::string>> problems;
};

Parsed parse(std::string_view bytes) {
    Parsed out;
    read_registry_file(bytes, {[&](const RegistryFileEntry& e) { out.entries.push_back(e); },
                               [&](int line, std::string_view p) {
                                   out.problems.emplace_back(line, std::string(p));
                               }});
    return out;
}

// UTF-16LE with a byte-order mark, from ASCII/UTF-8 text (BMP characters only).
std::string utf16le(std::string_view utf8) {
    std::string out = "\xFF\xFE";
    for (std::size_t i = 0; i < utf8.size();) {
        char32_t c = static_cast<unsigned char>(utf8[i]);
        int extra = c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
        if (extra) c &= extra == 2 ? 0x0F : 0x1F;
        for (int k = 1; k <= extra; ++k) c = c << 6 | (utf8[i + k] & 0x3F);
        i += 1 + extra;
        out += static_cast<char>(c & 0xFF);
        out += static_cast<char>(c >> 8);
    }
    return out;
}

std::string text_of(const RegistryFileEntry& e) {
    return text_from_data(e.data);
}

TEST(RegistryFile, Regedit4) {
    const Parsed p = parse(
        "REGEDIT4\r\n\r\n"
        "[HKEY_CURRENT_USER\\Software\\Corvale]\r\n"
        "@=\"default\"\r\n"
        "\"Path\"=\"C:\\\\Tools\\\\\"\r\n"
        "\"Quote\"=\"say \\\"hi\\\"\"\r\n"
        "\"Count\"=dword:0000000a\r\n");
    ASSERT_TRUE(p.problems.empty());
    ASSERT_EQ(p.entries.size(), 5u);
    EXPECT_EQ(p.entries[0].kind, Kind::Key);
    EXPECT_EQ(p.entries[0].key, "HKEY_CURRENT_USER\\Software\\Corvale");
    EXPECT_EQ(p.entries[0].line, 3);
    EXPECT_EQ(p.entries[1].kind, Kind::Value);
    EXPECT_EQ(p.entries[1].name, "");
    EXPECT_EQ(text_of(p.entries[1]), "default");
    EXPECT_EQ(p.entries[2].name, "Path");
    EXPECT_EQ(text_of(p.entries[2]), "C:\\Tools\\");
    EXPECT_EQ(p.entries[2].data.type, reg_type::kSz);
    EXPECT_EQ(text_of(p.entries[3]), "say \"hi\"");
    EXPECT_EQ(p.entries[4].data.type, reg_type::kDword);
    EXPECT_EQ(text_of(p.entries[4]), "10");
}

TEST(RegistryFile, LoneBackslashEscapesTheNextCharacter) {
    const Parsed p = parse("[HKEY_USERS\\x]\n\"a\\b\"=\"c\\d\\\\e\"\n");
    ASSERT_EQ(p.entries.size(), 2u);
    EXPECT_EQ(p.entries[1].name, "ab");
    EXPECT_EQ(text_of(p.entries[1]), "cd\\e");
}

TEST(RegistryFile, Windows1252Text) {
    const Parsed p = parse("REGEDIT4\n[HKEY_USERS\\x]\n\"Caf\xE9\"=\"na\xEFve\"\n");
    ASSERT_EQ(p.entries.size(), 2u);
    EXPECT_EQ(p.entries[1].name, "Caf\xC3\xA9");
    EXPECT_EQ(text_of(p.entries[1]), "na\xC3\xAFve");
}

TEST(RegistryFile, Version5InUtf16) {
    const Parsed p =
        parse(utf16le("Windows Registry Editor Version 5.00\r\n\r\n"
                      "[HKEY_LOCAL_MACHINE\\Software\\Corvale\\Été]\r\n"
                      "\"Name\"=\"Ünïcode €\"\r\n"
                      "\"Home\"=hex(2):25,00,55,00,53,00,45,00,52,00,25,00,00,00\r\n"
                      "\"List\"=hex(7):61,00,00,00,62,00,63,00,00,00,00,00\r\n"));
    ASSERT_TRUE(p.problems.empty()) << p.problems[0].second;
    ASSERT_EQ(p.entries.size(), 4u);
    EXPECT_EQ(p.entries[0].key, "HKEY_LOCAL_MACHINE\\Software\\Corvale\\Été");
    EXPECT_EQ(text_of(p.entries[1]), "Ünïcode €");
    EXPECT_EQ(p.entries[2].data.type, reg_type::kExpandSz);
    EXPECT_EQ(p.entries[2].data.bytes, "%USER%");
    EXPECT_EQ(p.entries[3].data.type, reg_type::kMultiSz);
    EXPECT_EQ(text_of(p.entries[3]), "a|bc");
}

TEST(RegistryFile, Regedit4HexStringsAreAnsi) {
    const Parsed p = parse(
        "REGEDIT4\n[HKEY_USERS\\x]\n\"E\"=hex(2):25,54,25,00\n"
        "\"M\"=hex(7):61,00,62,00,00\n");
    ASSERT_EQ(p.entries.size(), 3u);
    EXPECT_EQ(p.entries[1].data.bytes, "%T%");
    EXPECT_EQ(text_of(p.entries[2]), "a|b");
}

TEST(RegistryFile, HexWithContinuations) {
    const Parsed p = parse(
        "REGEDIT4\n[HKEY_USERS\\x]\n"
        "\"Blob\"=hex:01,02,03,\\\n"
        "  04,05,\\\n"
        "  ff\n"
        "\"Q\"=hex(b):00,00,00,00,01,00,00,00\n"
        "\"Raw\"=hex(0):\n"
        "\"Odd\"=hex(4):2a,00,00,00\n"
        "\"After\"=\"x\"\n");
    ASSERT_TRUE(p.problems.empty()) << p.problems[0].second;
    ASSERT_EQ(p.entries.size(), 6u);
    EXPECT_EQ(p.entries[1].data.type, reg_type::kBinary);
    EXPECT_EQ(text_of(p.entries[1]), "01 02 03 04 05 ff");
    EXPECT_EQ(p.entries[2].data.type, reg_type::kQword);
    EXPECT_EQ(text_of(p.entries[2]), "4294967296");
    EXPECT_EQ(p.entries[3].data.type, reg_type::kNone);
    EXPECT_EQ(p.entries[3].data.bytes, "");
    EXPECT_EQ(text_of(p.entries[4]), "42");
    EXPECT_EQ(p.entries[5].line, 9);
}

TEST(RegistryFile, Deletions) {
    const Parsed p = parse("REGEDIT4\n[-HKEY_USERS\\old]\n[HKEY_USERS\\x]\n\"gone\"=-\n@=-\n");
    ASSERT_EQ(p.entries.size(), 4u);
    EXPECT_EQ(p.entries[0].kind, Kind::DeleteKey);
    EXPECT_EQ(p.entries[0].key, "HKEY_USERS\\old");
    EXPECT_EQ(p.entries[2].kind, Kind::DeleteValue);
    EXPECT_EQ(p.entries[2].name, "gone");
    EXPECT_EQ(p.entries[3].kind, Kind::DeleteValue);
    EXPECT_EQ(p.entries[3].name, "");
}

TEST(RegistryFile, CommentsBlanksAndHeaders) {
    const Parsed p = parse(
        "\xEF\xBB\xBFREGEDIT4\n; a comment \\\n\n   \t\n[HKEY_USERS\\x]  \n"
        "  \"a\" = \"1\"  \n");
    EXPECT_TRUE(p.problems.empty());
    ASSERT_EQ(p.entries.size(), 2u);
    EXPECT_EQ(text_of(p.entries[1]), "1");
}

TEST(RegistryFile, MalformedLinesAreReportedOneByOne) {
    const Parsed p = parse(
        "REGEDIT4\n"
        "[HKEY_USERS\\x\n"         // 2: no ]
        "[]\n"                     // 3: empty key
        "\"unclosed=\"x\"\n"       // 4: name without closing quote... then junk
        "\"a\"\"b\"\n"             // 5: no =
        "\"a\"=\"open\n"           // 6: text without closing quote
        "\"a\"=\"x\" junk\n"       // 7: text after the quote
        "\"a\"=dword:xyz\n"        // 8: bad dword
        "\"a\"=dword:123456789\n"  // 9: too many digits
        "\"a\"=hex:1,zz\n"         // 10: bad hex
        "\"a\"=hex(q):00\n"        // 11: bad hex type
        "\"a\"=hex;00\n"           // 12: no colon
        "\"a\"=something\n"        // 13: unknown value form
        "garbage\n"                // 14: not a key or value
        "[HKEY_USERS\\ok]\n"       // 15: fine
        "\"fine\"=\"yes\"\n");     // 16: fine
    ASSERT_EQ(p.entries.size(), 2u);
    EXPECT_EQ(p.entries[1].line, 16);
    std::vector<int> lines;
    for (const auto& [line, text] : p.problems) lines.push_back(line);
    EXPECT_EQ(lines, (std::vector<int>{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}));
    EXPECT_EQ(p.problems[0].second, "the key has no closing ]");
    EXPECT_EQ(p.problems[12].second, "not a key or value line");
}

TEST(RegistryFile, BinaryJunkNeverCrashes) {
    std::string junk;
    for (int i = 0; i < 5000; ++i) junk += static_cast<char>((i * 7919) % 256);
    const Parsed p = parse(junk);
    EXPECT_TRUE(p.entries.empty() || !p.problems.empty());
    const Parsed odd = parse(std::string("\xFF\xFE\x00\xD8[\x00", 6));  // lone surrogate, odd end
    EXPECT_EQ(odd.problems.size(), 1u);
    const Parsed tail = parse("[HKEY_USERS\\x]\n\"a\"=hex:01,\\");  // continuation at the end
    EXPECT_EQ(tail.entries.size(), 2u);
}

TEST(RegistryFile, Encodings) {
    bool utf16 = false;
    EXPECT_EQ(registry_file_text(utf16le("ab"), utf16), "ab");
    EXPECT_TRUE(utf16);
    EXPECT_EQ(registry_file_text(std::string("a\0b\0", 4), utf16), "ab");  // no mark
    EXPECT_TRUE(utf16);
    EXPECT_EQ(registry_file_text(std::string("\xFE\xFF\0a", 4), utf16), "a");
    EXPECT_EQ(registry_file_text("\xEF\xBB\xBFx", utf16), "x");
    EXPECT_FALSE(utf16);
    EXPECT_EQ(registry_file_text("\xE9", utf16), "\xC3\xA9");
    // A character beyond the BMP as a surrogate pair.
    EXPECT_EQ(registry_file_text(std::string("\xFF\xFE\x3D\xD8\x00\xDE", 6), utf16),
              "\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace quiller
