// Registry export files: both kinds and encodings, every value form, continuations, and
// malformed input that is reported line by line.
#include <gtest/gtest.h>

#include "os/registry_file.hpp"
#include "os/registry_values.hpp"

namespace quiller {
namespace {

using Kind = RegistryFileEntry::Kind;

// An entry as one line: "LINE [KEY]", "LINE [-KEY]", "LINE NAME=TYPE:TEXT" or "LINE NAME=-".
std::string shown(const RegistryFileEntry& e) {
    std::string out = std::to_string(e.line) + " ";
    if (e.kind == Kind::Key || e.kind == Kind::DeleteKey)
        return out + (e.kind == Kind::Key ? "[" : "[-") + e.key + "]";
    out += e.name + "=";
    if (e.kind == Kind::DeleteValue) return out + "-";
    return out + std::to_string(e.data.type) + ":" + text_from_data(e.data);
}

struct Parsed {
    std::vector<std::string> entries;
    std::vector<std::pair<int, std::string>> problems;
};

Parsed parse(std::string_view bytes) {
    Parsed out;
    read_registry_file(bytes, {[&](const RegistryFileEntry& e) { out.entries.push_back(shown(e)); },
                               [&](int line, std::string_view p) {
                                   out.problems.emplace_back(line, std::string(p));
                               }});
    return out;
}

// Every entry form, the marks and blanks around them, and the line each entry starts on. The
// script test registry_loadreg.prg covers the value forms in both encodings through loadreg.
TEST(RegistryFile, EntriesAndTheirLines) {
    const Parsed p = parse(
        "\xEF\xBB\xBFREGEDIT4\n"
        "; a comment ending in a backslash continues nothing \\\n"
        "\n"
        "[-HKEY_USERS\\old]\n"
        "[HKEY_USERS\\x]  \r\n"
        "@=\"default\"\r\n"
        "  \"a\\b\" = \"c\\d\\\\e\"  \n"  // a lone backslash escapes the next character
        "\"Blob\"=hex:01,02,03,\\\n"
        "  04,05,\\\n"
        "  ff\n"
        "\"Raw\"=hex(0):\n"
        "\"Odd\"=hex(4):2a,00,00,00\n"
        "\"gone\"=-\n"
        "@=-\n"
        "\"After\"=\"x\"\n");
    ASSERT_TRUE(p.problems.empty()) << p.problems[0].first << ": " << p.problems[0].second;
    EXPECT_EQ(p.entries, (std::vector<std::string>{
                             "4 [-HKEY_USERS\\old]", "5 [HKEY_USERS\\x]", "6 =1:default",
                             "7 ab=1:cd\\e", "8 Blob=3:01 02 03 04 05 ff",
                             "11 Raw=0:", "12 Odd=4:42", "13 gone=-", "14 =-", "15 After=1:x"}));
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
    EXPECT_EQ(p.entries, (std::vector<std::string>{"15 [HKEY_USERS\\ok]", "16 fine=1:yes"}));
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
    EXPECT_EQ(tail.entries, (std::vector<std::string>{"1 [HKEY_USERS\\x]", "2 a=3:01"}));
}

TEST(RegistryFile, Encodings) {
    bool utf16 = false;
    EXPECT_EQ(registry_file_text(std::string("\377\376a\0b\0", 6), utf16), "ab");
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
