// The registry operations' messages over the memory store, for the cases the script tests
// (tests/scripts/registry_*.prg) don't reach, and LastPrg, which needs the file-choosing window.
#include <gtest/gtest.h>

#include "os/registry.hpp"
#include "os/registry_operations.hpp"
#include "scripted_host.hpp"

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

// The remote rule where registry_messages.prg doesn't look, each operation with its own tag:
// local-only roots are refused, others can't connect.
TEST(RegistryOperations, RemoteRule) {
    Recorded r;
    EXPECT_FALSE(r.ops.key_exists("\\\\server\\HKEY_CURRENT_USER\\X"));
    EXPECT_FALSE(r.ops.value_exists("\\\\server\\HKEY_USERS\\X", "v"));
    EXPECT_FALSE(r.ops.delete_key("\\\\server\\HKEY_CURRENT_USER\\X"));
    EXPECT_FALSE(r.ops.delete_value("\\\\server\\HKEY_USERS\\X", "v"));
    EXPECT_FALSE(r.ops.enum_key("\\\\server\\HKEY_CURRENT_USER\\X", 0));
    EXPECT_FALSE(r.ops.enum_value("\\\\server\\HKEY_LOCAL_MACHINE\\X", 0));
    EXPECT_EQ(r.messages, (std::vector<std::string>{
                              "(RegKeyExists) HKEY_CURRENT_USER can't be read remotely.",
                              "(RegValueExists) \\\\server can't be connected to.",
                              "(DelRegKey) HKEY_CURRENT_USER can't be read remotely.",
                              "(DelRegValue) \\\\server can't be connected to.",
                              "(EnumRegKeys) HKEY_CURRENT_USER can't be read remotely.",
                              "(EnumRegValues) \\\\server can't be connected to.",
                          }));
    EXPECT_EQ(r.platform_texts[0], "");
    EXPECT_EQ(r.platform_texts[1], "The network path was not found (53)");
}

TEST(RegistryOperations, FailuresAndWhatIsNotOne) {
    Recorded r;
    r.ops.write_reg(kKey, std::string(16384, 'n'), "1", "");
    r.ops.write_reg(kKey, "DEFAULT", "unnamed", "");
    EXPECT_TRUE(r.ops.delete_value(kKey, "Default"));
    EXPECT_FALSE(r.ops.value_exists(kKey, ""));
    // missing_ok (loadreg's deletions): what isn't there is no failure.
    EXPECT_FALSE(r.ops.delete_value(kKey, "gone", true));
    EXPECT_TRUE(r.ops.delete_key(kKey, true));
    EXPECT_FALSE(r.ops.delete_key(kKey, true));
    Registry reg(r.ops);
    EXPECT_FALSE(reg.del_value());
    EXPECT_EQ(r.messages,
              (std::vector<std::string>{"(SetKeyValue) Software\\Corvale " +
                                            std::string(16384, 'n') + " Value couldn't be set.",
                                        "(DelRegValue) No registry key specified"}));
}

TEST(RegistryInARun, LastPrgIsOfferedAndStored) {
    Harness h;
    RegistryOperations ops(*h.registry, [](std::string_view, std::string_view) {});
    ops.write_reg("HKEY_CURRENT_USER\\Software\\Quiller", "LastPrg", "old.prg", "");

    h.host.chosen_script = "picked";
    h.files->files["picked.prg"] = "sub main\nprint $param_count$\nendsub\n";
    Engine engine(h.host, h.platform, standard_language());
    EXPECT_EQ(engine.run(""), 0);
    EXPECT_EQ(h.host.printed, std::vector<std::string>{"0"});
    EXPECT_TRUE(h.log().empty());
    EXPECT_EQ(h.host.offered_script, "old.prg");
    EXPECT_EQ(ops.read_reg("HKEY_CURRENT_USER\\Software\\Quiller", "LastPrg"), "picked");

    // A script named on the command line is not remembered.
    h.files->files["other.prg"] = "sub main\nendsub\n";
    Engine named(h.host, h.platform, standard_language());
    EXPECT_EQ(named.run("other.prg"), 0);
    EXPECT_EQ(ops.read_reg("HKEY_CURRENT_USER\\Software\\Quiller", "LastPrg"), "picked");
}

}  // namespace
}  // namespace quiller::testing
