// Registry paths (machine prefix, root, subkey, name limits) and the value conversions that the
// script tests (tests/scripts/registry_*.prg) don't reach.
#include <gtest/gtest.h>

#include "os/registry_path.hpp"
#include "os/registry_values.hpp"

namespace quiller {
namespace {

TEST(RegistryPath, MachineRootAndSubkey) {
    struct Case {
        const char* path;
        const char* machine;
        RegistryRoot root;
        const char* root_name;
        const char* subkey;
    };
    const Case cases[] = {
        {"HKEY_LOCAL_MACHINE\\Software\\X", "", RegistryRoot::LocalMachine, "HKEY_LOCAL_MACHINE",
         "Software\\X"},
        {"hkey_current_user\\a", "", RegistryRoot::CurrentUser, "HKEY_CURRENT_USER", "a"},
        {"Hkey_Classes_Root\\a", "", RegistryRoot::ClassesRoot, "HKEY_CLASSES_ROOT", "a"},
        {"HKEY_USERS\\.DEFAULT", "", RegistryRoot::Users, "HKEY_USERS", ".DEFAULT"},
        {"HKEY_CURRENT_USER", "", RegistryRoot::CurrentUser, "HKEY_CURRENT_USER", ""},
        {"\\\\server\\HKEY_USERS\\X", "\\\\server", RegistryRoot::Users, "HKEY_USERS", "X"},
        {"\\\\HKEY_USERS", "", RegistryRoot::Users, "HKEY_USERS", ""},  // no machine after all
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        const RegistryPath p = parse_registry_path(c.path);
        EXPECT_EQ(p.machine, c.machine);
        EXPECT_EQ(p.root, c.root);
        EXPECT_EQ(p.root_name, c.root_name);
        EXPECT_EQ(p.subkey, c.subkey);
    }
    for (const char* unknown : {"Software\\X", "HKLM\\Software", ""})
        EXPECT_EQ(parse_registry_path(unknown).root, RegistryRoot::None) << unknown;
    EXPECT_EQ(parse_registry_path("Software\\X").subkey, "X");
}

TEST(RegistryPath, SubkeyNames) {
    std::vector<std::string_view> names;
    ASSERT_TRUE(split_subkey("Software\\Quiller\\", names));
    EXPECT_EQ(names, (std::vector<std::string_view>{"Software", "Quiller"}));
    ASSERT_TRUE(split_subkey("", names));
    EXPECT_TRUE(names.empty());
    EXPECT_FALSE(split_subkey("a\\\\b", names));
    EXPECT_FALSE(split_subkey("\\a", names));
    EXPECT_TRUE(split_subkey(std::string(255, 'k'), names));
    EXPECT_FALSE(split_subkey(std::string(256, 'k'), names));
    std::string wide;  // the limit counts characters, not bytes
    for (int i = 0; i < 255; ++i) wide += "\xC3\xA9";
    EXPECT_TRUE(split_subkey(wide, names));
}

// The script test registry_values.prg has "12abc", "-1", 2^32 and "abc"; halves round to even.
TEST(RegistryValues, DwordFromText) {
    const std::pair<const char*, std::uint32_t> cases[] = {
        {"  42", 42},      {"4294967295", 4294967295u},
        {"4294967297", 1}, {"2.5", 2},
        {"3.5", 4},        {"&H1F", 31},
        {"", 0},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(dword_from_text(text), expected) << text;
    (void)dword_from_text("1e300");  // no trap on huge values
}

TEST(RegistryValues, OtherTypesAndTheDefaultValue) {
    const std::pair<RegistryData, const char*> cases[] = {
        {{reg_type::kNone, "A"}, "41"},
        {{reg_type::kBinary, ""}, ""},
        {{reg_type::kDwordBigEndian, std::string("\0\0\1\0", 4)}, "256"},
        {{reg_type::kMultiSz, std::string("a\0b\0\0", 5)}, "a|b"},
        {{reg_type::kSz, std::string("ab\0junk", 7)}, "ab"},
        {{reg_type::kDword, "\x05"}, "5"},  // short data
    };
    for (const auto& [data, expected] : cases) EXPECT_EQ(text_from_data(data), expected);
    EXPECT_EQ(data_from_text("a|b|c", reg_type::kMultiSz).bytes, std::string("a\0b\0c", 5));
    EXPECT_EQ(stored_value_name("default"), "");  // the default value
    EXPECT_EQ(stored_value_name("Defaults"), "Defaults");
}

}  // namespace
}  // namespace quiller
