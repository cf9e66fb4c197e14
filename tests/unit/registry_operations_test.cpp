// The registry operations' messages and results over the memory store, the Registry object, and
// the registry in a run: statements, functions, loadreg, LastPrg and the output window.
#include <gtest/gtest.h>

#include "scripted_host.hpp"
#include "services/registry.hpp"
#include "services/registry_operations.hpp"

namespace quiller::testing {
namespace {

struct Recorded {
    std::unique_ptr<RegistryStore> store = make_memory_registry_store();
    std::vector<std::string> messages;
    std::vector<std::string> platform_texts;
    RegistryOperations ops{*store, [this](std::string_view m, std::string_view t) {
                               messages.emplace_back(m);
                               platform_texts.emplace_back(t);
                           }};
};

constexpr std::string_view kKey = "HKEY_CURRENT_USER\\Software\\Corvale";

TEST(RegistryOperations, WriteAndRead) {
    Recorded r;
    r.ops.write_reg(kKey, "Name", "Ada", "");
    r.ops.write_reg(kKey, "Count", "12abc", "reg_dword");
    r.ops.write_reg(kKey, "List", "a|b", "REG_MULTI_SZ");
    r.ops.write_reg(kKey, "Path", "%TEMP%", "REG_EXPAND_SZ");
    r.ops.write_reg(kKey, "Other", "x", "REG_NONSENSE");
    EXPECT_TRUE(r.messages.empty());
    EXPECT_EQ(r.ops.read_reg(kKey, "name"), "Ada");
    EXPECT_EQ(r.ops.read_reg(kKey, "Count"), "12");
    EXPECT_EQ(r.ops.read_reg(kKey, "List"), "a|b");
    EXPECT_EQ(r.ops.get_key_value(kKey, "List")->bytes, std::string("a\0b", 3));
    EXPECT_EQ(r.ops.get_key_value(kKey, "Path")->type, reg_type::kExpandSz);
    EXPECT_EQ(r.ops.get_key_value(kKey, "Other")->type, reg_type::kSz);
    EXPECT_EQ(r.ops.read_reg(kKey, "Missing"), "");
    EXPECT_EQ(r.ops.read_reg("HKEY_CURRENT_USER\\Nowhere", "x"), "");
    EXPECT_EQ(r.ops.read_reg("Software\\NoRoot", "x"), "");
    EXPECT_TRUE(r.messages.empty());  // reading what isn't there is no failure
}

TEST(RegistryOperations, DefaultValue) {
    Recorded r;
    r.ops.write_reg(kKey, "DEFAULT", "unnamed", "");
    EXPECT_EQ(r.ops.read_reg(kKey, ""), "unnamed");
    EXPECT_TRUE(r.ops.value_exists(kKey, "default"));
    EXPECT_EQ(r.ops.enum_value(kKey, 0), "DEFAULT");
    EXPECT_TRUE(r.ops.delete_value(kKey, "Default"));
    EXPECT_FALSE(r.ops.value_exists(kKey, "DEFAULT"));
}

TEST(RegistryOperations, RemoteRule) {
    Recorded r;
    r.ops.write_reg("\\\\server\\HKEY_CURRENT_USER\\X", "v", "1", "");
    r.ops.write_reg("\\\\server\\HKEY_LOCAL_MACHINE\\Software\\X", "v", "1", "");
    EXPECT_EQ(r.ops.read_reg("\\\\server\\hkey_classes_root\\X", "v"), "");
    EXPECT_EQ(r.ops.read_reg("\\\\server\\HKEY_USERS\\X", "v"), "");
    EXPECT_FALSE(r.ops.key_exists("\\\\server\\HKEY_CURRENT_USER\\X"));
    EXPECT_FALSE(r.ops.value_exists("\\\\server\\HKEY_USERS\\X", "v"));
    EXPECT_FALSE(r.ops.delete_key("\\\\server\\HKEY_CURRENT_USER\\X"));
    EXPECT_FALSE(r.ops.delete_value("\\\\server\\HKEY_USERS\\X", "v"));
    EXPECT_FALSE(r.ops.enum_key("\\\\server\\HKEY_CURRENT_USER\\X", 0));
    EXPECT_FALSE(r.ops.enum_value("\\\\server\\HKEY_LOCAL_MACHINE\\X", 0));
    EXPECT_EQ(r.messages, (std::vector<std::string>{
                              "(WriteReg) HKEY_CURRENT_USER can't be read remotely.",
                              "(SetKeyValue) \\\\server can't be connected to.",
                              "(ReadReg) HKEY_CLASSES_ROOT can't be read remotely.",
                              "(GetKeyValue) \\\\server can't be connected to.",
                              "(RegKeyExists) HKEY_CURRENT_USER can't be read remotely.",
                              "(RegValueExists) \\\\server can't be connected to.",
                              "(DelRegKey) HKEY_CURRENT_USER can't be read remotely.",
                              "(DelRegValue) \\\\server can't be connected to.",
                              "(EnumRegKeys) HKEY_CURRENT_USER can't be read remotely.",
                              "(EnumRegValues) \\\\server can't be connected to.",
                          }));
    EXPECT_EQ(r.platform_texts[0], "");
    EXPECT_EQ(r.platform_texts[1], "The network path was not found (53)");
    EXPECT_FALSE(r.ops.key_exists("HKEY_LOCAL_MACHINE\\Software\\X"));  // nothing written
}

TEST(RegistryOperations, WriteFailures) {
    Recorded r;
    r.ops.write_reg("Software\\X", "v", "1", "");
    r.ops.write_reg("HKEY_BOGUS\\Software\\X", "v", "1", "");
    r.ops.write_reg("HKEY_CURRENT_USER\\" + std::string(300, 'k'), "v", "1", "");
    r.ops.write_reg(kKey, std::string(16384, 'n'), "1", "");
    ASSERT_EQ(r.messages.size(), 4u);
    EXPECT_EQ(r.messages[0], "(SetKeyValue) X Couldn't be opened/created.");
    EXPECT_EQ(r.platform_texts[0], "The handle is invalid (6)");
    EXPECT_EQ(r.messages[1], "(SetKeyValue) Software\\X Couldn't be opened/created.");
    EXPECT_EQ(r.messages[2],
              "(SetKeyValue) " + std::string(300, 'k') + " Couldn't be opened/created.");
    EXPECT_EQ(r.platform_texts[2], "The parameter is incorrect (87)");
    EXPECT_EQ(r.messages[3], "(SetKeyValue) Software\\Corvale " + std::string(16384, 'n') +
                                 " Value couldn't be set.");
}

TEST(RegistryOperations, Deletion) {
    Recorded r;
    r.ops.write_reg(std::string(kKey) + "\\Sub\\Deeper", "v", "1", "");
    r.ops.write_reg(kKey, "a", "1", "");
    EXPECT_TRUE(r.ops.delete_value(kKey, "A"));
    EXPECT_TRUE(r.ops.delete_key(kKey));
    EXPECT_FALSE(r.ops.key_exists(std::string(kKey) + "\\Sub\\Deeper"));
    EXPECT_TRUE(r.messages.empty());
    EXPECT_FALSE(r.ops.delete_key(kKey));
    EXPECT_FALSE(r.ops.delete_key("HKEY_CURRENT_USER"));
    EXPECT_FALSE(r.ops.delete_value(kKey, "a"));
    r.ops.write_reg(kKey, "b", "1", "");
    EXPECT_FALSE(r.ops.delete_value(kKey, "a"));
    EXPECT_TRUE(r.ops.delete_key(kKey, true));
    EXPECT_FALSE(r.ops.delete_key(kKey, true));  // missing_ok: no report
    EXPECT_EQ(r.messages,
              (std::vector<std::string>{
                  "(DelRegKey) 'HKEY_CURRENT_USER\\Software\\Corvale' Couldn't be opened",
                  "(DelRegKey) 'HKEY_CURRENT_USER' Couldn't be deleted",
                  "(DelRegValue) HKEY_CURRENT_USER\\Software\\Corvale Couldn't be opened",
                  "(DelRegValue) HKEY_CURRENT_USER\\Software\\Corvale a Couldn't be deleted",
              }));
}

TEST(RegistryOperations, Enumeration) {
    Recorded r;
    for (const char* k : {"b", "A", "c"}) r.ops.create_key(std::string(kKey) + "\\" + k);
    r.ops.write_reg(kKey, "y", "1", "");
    r.ops.write_reg(kKey, "X", "1", "");
    EXPECT_EQ(r.ops.enum_key(kKey, 0), "A");
    EXPECT_EQ(r.ops.enum_key(kKey, 2), "c");
    EXPECT_EQ(r.ops.enum_key(kKey, 3), std::nullopt);
    EXPECT_EQ(r.ops.enum_value(kKey, 0), "X");
    EXPECT_EQ(r.ops.enum_value(kKey, 2), std::nullopt);
    EXPECT_TRUE(r.messages.empty());
    EXPECT_EQ(r.ops.enum_key("HKEY_USERS\\Nope", 0), std::nullopt);
    EXPECT_EQ(r.ops.enum_value("HKEY_USERS\\Nope", 0), std::nullopt);
    EXPECT_EQ(r.messages, (std::vector<std::string>{
                              "(EnumRegKeys) 'HKEY_USERS\\Nope' Couldn't be opened.",
                              "(EnumRegValues) HKEY_USERS\\Nope Couldn't be opened.",
                          }));
}

TEST(RegistryObject, PropertiesAndMethods) {
    Recorded r;
    Registry reg(r.ops);
    reg.contents = "x";
    EXPECT_FALSE(reg.write_contents());
    EXPECT_FALSE(reg.del_key());
    EXPECT_FALSE(reg.del_value());
    EXPECT_EQ(r.messages, (std::vector<std::string>{"(WriteReg) No registry key specified",
                                                    "(DelRegKey) No registry key specified",
                                                    "(DelRegValue) No registry key specified"}));
    reg.key = std::string(kKey);
    reg.value = "Size";
    reg.contents = "42";
    reg.contents_type = "REG_DWORD";
    EXPECT_TRUE(reg.write_contents());
    reg.contents.clear();
    reg.contents_type.clear();
    EXPECT_TRUE(reg.read_contents());
    EXPECT_EQ(reg.contents, "42");
    EXPECT_EQ(reg.contents_type, "REG_DWORD");
    EXPECT_TRUE(reg.key_exists());
    EXPECT_TRUE(reg.value_exists());
    EXPECT_EQ(reg.enum_values(0), "Size");
    EXPECT_EQ(reg.enum_values(1), "");
    reg.value = "Missing";
    reg.contents_default = "fallback";
    EXPECT_FALSE(reg.read_contents());
    EXPECT_EQ(reg.contents, "fallback");
    EXPECT_EQ(reg.contents_type, "");
    reg.value = "Size";
    EXPECT_TRUE(reg.del_value());
    EXPECT_TRUE(reg.del_key());
    EXPECT_FALSE(reg.key_exists());
}

// --- In a run -----------------------------------------------------------------------------

TEST(RegistryInARun, StatementsFunctionsAndConditions) {
    Harness h;
    const int status = h.run(
        "sub main\n"
        "writereg \"HKEY_CURRENT_USER\\Software\\Corvale\" Name \"Ada L\"\n"
        "writereg \"HKEY_CURRENT_USER\\Software\\Corvale\" Count 12abc REG_DWORD\n"
        "set $v$ readreg \"HKEY_CURRENT_USER\\Software\\Corvale\" Name\n"
        "print \"$v$\"\n"
        "set $v$ readreg \"HKEY_CURRENT_USER\\Software\\Corvale\" Count\n"
        "print $v$\n"
        "set $v$ regvaluetype \"HKEY_CURRENT_USER\\Software\\Corvale\" Count\n"
        "print $v$\n"
        "if regvalueexists \"HKEY_CURRENT_USER\\Software\\Corvale\" Name\n"
        "  print yes\n"
        "endif\n"
        "delregvalue \"HKEY_CURRENT_USER\\Software\\Corvale\" Name\n"
        "ifnot regvalueexists \"HKEY_CURRENT_USER\\Software\\Corvale\" Name\n"
        "  print gone\n"
        "endif\n"
        "delregkey \"HKEY_CURRENT_USER\\Software\\Corvale\"\n"
        "ifnot regkeyexists \"HKEY_CURRENT_USER\\Software\\Corvale\"\n"
        "  print \"no key\"\n"
        "endif\n"
        "endsub\n");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(h.host.printed,
              (std::vector<std::string>{"Ada L", "12", "REG_DWORD", "yes", "gone", "no key"}));
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(RegistryInARun, EnumerationProtocol) {
    Harness h;
    const int status = h.run(
        "sub main\n"
        "writereg \"HKEY_USERS\\E\\b\" v 1\n"
        "writereg \"HKEY_USERS\\E\\A\" v 1\n"
        "set $k$ enumregkeys \"HKEY_USERS\\E\"\n"
        "while \"$k$\" <> \"\"\n"
        "  print $k$-$enumregkeys$\n"
        "  set $k$ enumregkeys \"HKEY_USERS\\E\"\n"
        "endwhile\n"
        "print end-$enumregkeys$\n"
        "endsub\n");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(h.host.printed, (std::vector<std::string>{"A-1", "b-2", "end-0"}));
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(RegistryInARun, Loadreg) {
    Harness h;
    h.files->files["in.reg"] =
        "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\Software\\Corvale]\r\n\"Dir\"=\"C:\\\\x\"\r\n"
        "\"N\"=dword:0000000a\r\nbad line\r\n";
    h.run(
        "sub main\nloadreg in.reg\n"
        "set $v$ readreg \"HKEY_LOCAL_MACHINE\\Software\\Corvale\" Dir\nprint $v$\n"
        "set $v$ readreg \"HKEY_LOCAL_MACHINE\\Software\\Corvale\" N\nprint $v$\n"
        "loadreg missing.reg\nendsub\n");
    EXPECT_EQ(h.host.printed, (std::vector<std::string>{"C:\\x", "10"}));
    ASSERT_EQ(h.host.errors.size(), 2u);
    EXPECT_NE(h.host.errors[0].text.find("(LoadReg) in.reg line 5: not a key or value line"),
              std::string::npos);
    EXPECT_NE(h.host.errors[1].text.find("(LoadReg) Couldn't open 'missing.reg'"),
              std::string::npos);
}

TEST(RegistryInARun, LastPrgIsOfferedAndStored) {
    Harness h;
    RegistryOperations ops(*h.registry, [](std::string_view, std::string_view) {});
    ops.write_reg("HKEY_CURRENT_USER\\Software\\Quiller", "LastPrg", "old.prg", "");

    h.host.chosen_script = "picked";
    h.files->files["picked.prg"] = "sub main\nendsub\n";
    Engine engine(h.host, h.platform);
    EXPECT_EQ(engine.run(""), 0);
    EXPECT_EQ(h.host.offered_script, "old.prg");
    EXPECT_EQ(ops.read_reg("HKEY_CURRENT_USER\\Software\\Quiller", "LastPrg"), "picked");

    // A script named on the command line is not remembered.
    h.files->files["other.prg"] = "sub main\nendsub\n";
    Engine named(h.host, h.platform);
    EXPECT_EQ(named.run("other.prg"), 0);
    EXPECT_EQ(ops.read_reg("HKEY_CURRENT_USER\\Software\\Quiller", "LastPrg"), "picked");
}

TEST(RegistryInARun, PrintwindowStoresThePlacement) {
    Harness h;
    h.run("sub main\nprintwindow 100 200 3000 4000\nprintwindow 1 2 x 4\nendsub\n");
    RegistryOperations ops(*h.registry, [](std::string_view, std::string_view) {});
    const std::string key = "HKEY_CURRENT_USER\\Software\\Quiller\\DisplayForm";
    // The second line fails at its width: Top, Height and Left were written before.
    EXPECT_EQ(ops.read_reg(key, "Left"), "1");
    EXPECT_EQ(ops.read_reg(key, "Top"), "2");
    EXPECT_EQ(ops.read_reg(key, "Width"), "3000");
    EXPECT_EQ(ops.read_reg(key, "Height"), "4");
    EXPECT_EQ(ops.get_key_value(key, "Top")->type, reg_type::kSz);
    EXPECT_EQ(h.host.errors.size(), 1u);
}

}  // namespace
}  // namespace quiller::testing
