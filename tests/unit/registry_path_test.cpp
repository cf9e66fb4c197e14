// Registry paths (machine prefix, root, subkey, name limits) and values as script text.
#include <gtest/gtest.h>

#include "services/registry_path.hpp"
#include "services/registry_values.hpp"

namespace quiller {
namespace {

TEST(RegistryPath, RootAndSubkey) {
    const RegistryPath p = parse_registry_path("HKEY_LOCAL_MACHINE\\Software\\Corvale\\X");
    EXPECT_EQ(p.machine, "");
    EXPECT_EQ(p.root_name, "HKEY_LOCAL_MACHINE");
    EXPECT_EQ(p.root, RegistryRoot::LocalMachine);
    EXPECT_EQ(p.subkey, "Software\\Corvale\\X");
}

TEST(RegistryPath, RootNamesIgnoreCase) {
    EXPECT_EQ(parse_registry_path("hkey_current_user\\a").root, RegistryRoot::CurrentUser);
    EXPECT_EQ(parse_registry_path("Hkey_Classes_Root\\a").root, RegistryRoot::ClassesRoot);
    EXPECT_EQ(parse_registry_path("HKEY_USERS\\.DEFAULT").root, RegistryRoot::Users);
    EXPECT_EQ(parse_registry_path("hkey_current_user\\a").root_name, "HKEY_CURRENT_USER");
}

TEST(RegistryPath, RootAlone) {
    const RegistryPath p = parse_registry_path("HKEY_CURRENT_USER");
    EXPECT_EQ(p.root, RegistryRoot::CurrentUser);
    EXPECT_EQ(p.subkey, "");
}

TEST(RegistryPath, UnknownRoots) {
    EXPECT_EQ(parse_registry_path("Software\\X").root, RegistryRoot::None);
    EXPECT_EQ(parse_registry_path("Software\\X").subkey, "X");
    EXPECT_EQ(parse_registry_path("HKLM\\Software").root, RegistryRoot::None);
    EXPECT_EQ(parse_registry_path("").root, RegistryRoot::None);
}

TEST(RegistryPath, MachinePrefix) {
    const RegistryPath p = parse_registry_path("\\\\server\\HKEY_LOCAL_MACHINE\\Software\\X");
    EXPECT_EQ(p.machine, "\\\\server");
    EXPECT_EQ(p.root, RegistryRoot::LocalMachine);
    EXPECT_EQ(p.subkey, "Software\\X");
    EXPECT_FALSE(refused_remotely(p));
    EXPECT_TRUE(refused_remotely(parse_registry_path("\\\\server\\HKEY_CURRENT_USER\\X")));
    EXPECT_TRUE(refused_remotely(parse_registry_path("\\\\server\\HKEY_CLASSES_ROOT\\X")));
    EXPECT_FALSE(refused_remotely(parse_registry_path("\\\\server\\HKEY_USERS\\X")));
    EXPECT_FALSE(refused_remotely(parse_registry_path("HKEY_CURRENT_USER\\X")));
}

TEST(RegistryPath, TwoBackslashesAndNoMore) {
    const RegistryPath p = parse_registry_path("\\\\HKEY_USERS");
    EXPECT_EQ(p.machine, "");
    EXPECT_EQ(p.root, RegistryRoot::Users);
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
    // The limit counts characters, not bytes.
    std::string wide;
    for (int i = 0; i < 255; ++i) wide += "\xC3\xA9";
    EXPECT_TRUE(split_subkey(wide, names));
}

TEST(RegistryPath, LocalStoresRefuseOtherMachines) {
    std::vector<std::string_view> names;
    EXPECT_EQ(local_key_names({"\\\\s", RegistryRoot::Users, "a"}, names), reg_error::kBadNetPath);
    EXPECT_EQ(local_key_names({"", RegistryRoot::None, "a"}, names), reg_error::kInvalidHandle);
    EXPECT_EQ(local_key_names({"", RegistryRoot::Users, "a\\\\b"}, names),
              reg_error::kInvalidParameter);
    EXPECT_EQ(local_key_names({"", RegistryRoot::Users, "a\\b"}, names), reg_error::kOk);
}

TEST(RegistryValues, WriteTypes) {
    EXPECT_EQ(write_type_code("REG_SZ"), reg_type::kSz);
    EXPECT_EQ(write_type_code(""), reg_type::kSz);
    EXPECT_EQ(write_type_code("reg_dword"), reg_type::kDword);
    EXPECT_EQ(write_type_code("Reg_Expand_Sz"), reg_type::kExpandSz);
    EXPECT_EQ(write_type_code("REG_MULTI_SZ"), reg_type::kMultiSz);
    EXPECT_EQ(write_type_code("REG_BINARY"), reg_type::kSz);
    EXPECT_EQ(write_type_code("nonsense"), reg_type::kSz);
}

TEST(RegistryValues, TypeNames) {
    EXPECT_EQ(type_name(1), "REG_SZ");
    EXPECT_EQ(type_name(2), "REG_EXPAND_SZ");
    EXPECT_EQ(type_name(3), "REG_BINARY");
    EXPECT_EQ(type_name(4), "REG_DWORD");
    EXPECT_EQ(type_name(7), "REG_MULTI_SZ");
    EXPECT_EQ(type_name(0), "UNKNOWN");
    EXPECT_EQ(type_name(11), "UNKNOWN");
}

TEST(RegistryValues, DwordFromText) {
    EXPECT_EQ(dword_from_text("12abc"), 12u);
    EXPECT_EQ(dword_from_text("abc"), 0u);
    EXPECT_EQ(dword_from_text(""), 0u);
    EXPECT_EQ(dword_from_text("  42"), 42u);
    EXPECT_EQ(dword_from_text("-1"), 4294967295u);
    EXPECT_EQ(dword_from_text("4294967295"), 4294967295u);
    EXPECT_EQ(dword_from_text("4294967296"), 0u);
    EXPECT_EQ(dword_from_text("4294967297"), 1u);
    EXPECT_EQ(dword_from_text("2.5"), 2u);
    EXPECT_EQ(dword_from_text("3.5"), 4u);
    EXPECT_EQ(dword_from_text("&H1F"), 31u);
    EXPECT_EQ(dword_from_text("1e300"), dword_from_text("1e300"));  // no trap on huge values
}

TEST(RegistryValues, TextRoundTrips) {
    EXPECT_EQ(text_from_data(data_from_text("hello", reg_type::kSz)), "hello");
    EXPECT_EQ(text_from_data(data_from_text("%TEMP%\\x", reg_type::kExpandSz)), "%TEMP%\\x");
    const RegistryData multi = data_from_text("a|b|c", reg_type::kMultiSz);
    EXPECT_EQ(multi.bytes, std::string("a\0b\0c", 5));
    EXPECT_EQ(text_from_data(multi), "a|b|c");
    const RegistryData dword = data_from_text("258", reg_type::kDword);
    EXPECT_EQ(dword.bytes, std::string("\x02\x01\0\0", 4));
    EXPECT_EQ(text_from_data(dword), "258");
}

TEST(RegistryValues, ReadingOtherTypes) {
    EXPECT_EQ(text_from_data({reg_type::kBinary, std::string("\x01\xab\xff", 3)}), "01 ab ff");
    EXPECT_EQ(text_from_data({reg_type::kBinary, ""}), "");
    EXPECT_EQ(text_from_data({reg_type::kNone, "A"}), "41");
    EXPECT_EQ(text_from_data({reg_type::kQword, std::string("\0\0\0\0\1\0\0\0", 8)}), "4294967296");
    EXPECT_EQ(text_from_data({reg_type::kDwordBigEndian, std::string("\0\0\1\0", 4)}), "256");
    EXPECT_EQ(text_from_data({reg_type::kMultiSz, std::string("a\0b\0\0", 5)}), "a|b");
    EXPECT_EQ(text_from_data({reg_type::kSz, std::string("ab\0junk", 7)}), "ab");
    EXPECT_EQ(text_from_data({reg_type::kDword, "\x05"}), "5");  // short data
}

TEST(RegistryValues, DefaultValueName) {
    EXPECT_EQ(stored_value_name("DEFAULT"), "");
    EXPECT_EQ(stored_value_name("default"), "");
    EXPECT_EQ(stored_value_name(""), "");
    EXPECT_EQ(stored_value_name("Defaults"), "Defaults");
    EXPECT_EQ(shown_value_name(""), "DEFAULT");
    EXPECT_EQ(shown_value_name("x"), "x");
}

}  // namespace
}  // namespace quiller
