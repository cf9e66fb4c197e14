// The registry stores' common contract, checked on every store of this build: the memory store
// and, on POSIX, the SQLite store in a scratch file. The script tests (registry_*.prg) cover the
// rest through the statements.
#include <gtest/gtest.h>

#include <functional>

#include "os/registry_store.hpp"
#include "os/registry_values.hpp"
#include "scratch_folder.hpp"
#ifndef _WIN32
#include "os/posix/posix_registry.hpp"
#endif

namespace quiller {
namespace {

namespace fs = std::filesystem;

using StoreFactory = std::function<std::unique_ptr<RegistryStore>(const fs::path& dir)>;
using Names = std::vector<std::string>;

class RegistryStoreContract : public testing::ScratchFolder,
                              public ::testing::WithParamInterface<StoreFactory> {
  protected:
    void SetUp() override {
        ScratchFolder::SetUp();
        store = GetParam()(dir);
    }
    void TearDown() override {
        store.reset();
        ScratchFolder::TearDown();
    }

    static RegistryKeyRef key(std::string_view subkey,
                              RegistryRoot root = RegistryRoot::CurrentUser) {
        return {{}, root, subkey};
    }
    int set(std::string_view subkey, std::string_view name, std::string_view text) {
        RegistryStatus s = store->create_key(key(subkey));
        if (s.ok()) s = store->set_value(key(subkey), name, data_from_text(text, reg_type::kSz));
        return s.code;
    }
    std::string get(std::string_view subkey, std::string_view name) {
        RegistryData d;
        const RegistryStatus s = store->read_value(key(subkey), name, d);
        return s.ok() ? text_from_data(d)
                      : std::string("<").append(std::to_string(s.code)).append(">");
    }
    // The subkeys, or with `of_values` the value names, of a key in enumeration order.
    Names names(std::string_view subkey, bool of_values = false) {
        Names out;
        std::string name;
        const auto enumerate = of_values ? &RegistryStore::enum_value : &RegistryStore::enum_key;
        for (std::uint32_t i = 0; (store.get()->*enumerate)(key(subkey), i, name).ok(); ++i)
            out.push_back(name);
        return out;
    }

    std::unique_ptr<RegistryStore> store;
};

TEST_P(RegistryStoreContract, ValuesRoundTripUnderCaseBlindNames) {
    ASSERT_TRUE(store->create_key(key("Bin")).ok());
    RegistryData d;
    for (const std::string& bytes : {std::string("\0\1\0", 3), std::string()}) {
        ASSERT_TRUE(store->set_value(key("Bin"), "b", {reg_type::kBinary, bytes}).ok());
        ASSERT_TRUE(store->read_value(key("Bin"), "b", d).ok());
        EXPECT_EQ(d.bytes, bytes);
    }
    // Names ignore case, though "ß" and "SS" are two names; the first spelling stays.
    EXPECT_EQ(set("Software\\ÄrgerCo", "Größe", "1"), 0);
    EXPECT_EQ(get("SOFTWARE\\ärgerco", "GRÖSSE"), "<2>");
    EXPECT_EQ(set("software\\ärgerco", "GRÖßE", "2"), 0);
    EXPECT_EQ(get("Software\\ÄrgerCo", "größe"), "2");
    EXPECT_EQ(names("Software"), Names{"ÄrgerCo"});
    // The default value is named "" and comes first.
    ASSERT_EQ(set("Software\\ÄrgerCo", "", "unnamed"), 0);
    EXPECT_EQ(names("Software\\ÄrgerCo", true), (Names{"", "Größe"}));
}

// Where a failure happens (opening the key or working in it) decides the script's message.
TEST_P(RegistryStoreContract, MissingKeysValuesAndRoots) {
    RegistryData d;
    RegistryStatus s = store->read_value(key("Nowhere"), "x", d);
    EXPECT_EQ(s.code, reg_error::kFileNotFound);
    EXPECT_EQ(s.step, RegistryStep::Open);
    ASSERT_EQ(set("Here", "a", "1"), 0);
    s = store->read_value(key("Here"), "b", d);
    EXPECT_EQ(s.code, reg_error::kFileNotFound);
    EXPECT_EQ(s.step, RegistryStep::Work);
    std::string name;
    s = store->enum_key(key("Here"), 0, name);
    EXPECT_EQ(s.code, reg_error::kNoMoreItems);
    EXPECT_EQ(s.step, RegistryStep::Work);
    // Each root is a tree of its own; the root itself holds values and can't be deleted.
    EXPECT_EQ(get("Here", "a"), "1");
    EXPECT_EQ(store->open_key(key("Here", RegistryRoot::Users)).code, reg_error::kFileNotFound);
    EXPECT_EQ(set("", "AtRoot", "yes"), 0);
    EXPECT_EQ(get("", "AtRoot"), "yes");
    EXPECT_EQ(store->delete_key(key("")).code, reg_error::kAccessDenied);
}

TEST_P(RegistryStoreContract, BadNamesMakeNothing) {
    const RegistryData one = data_from_text("1", reg_type::kSz);
    const RegistryStatus bad_key = store->write_value(key("a\\\\b"), "v", one);
    EXPECT_EQ(bad_key.code, reg_error::kInvalidParameter);
    EXPECT_EQ(bad_key.step, RegistryStep::Open);
    const RegistryStatus bad_name = store->write_value(key("Ok"), std::string(16384, 'n'), one);
    EXPECT_EQ(bad_name.code, reg_error::kInvalidParameter);
    EXPECT_EQ(bad_name.step, RegistryStep::Work);
    EXPECT_EQ(store->create_key({"\\\\server", RegistryRoot::LocalMachine, "a"}).code,
              reg_error::kBadNetPath);
    EXPECT_TRUE(store->write_value(key("Ok\\Deep"), "v", one).ok());  // makes the keys
    EXPECT_EQ(names(""), Names{"Ok"});
    EXPECT_EQ(names("Ok", true), Names{});
}

TEST_P(RegistryStoreContract, DeletionTakesTheSubtreeAndNothingElse) {
    ASSERT_EQ(set("Tree\\A\\B\\C", "deep", "1"), 0);
    ASSERT_EQ(set("Tree\\A", "v", "1"), 0);
    ASSERT_EQ(set("Tree\\Other", "v", "1"), 0);
    ASSERT_EQ(set("Treetop", "v", "1"), 0);
    EXPECT_EQ(store->delete_value(key("Tree\\Other"), "V").code, 0);
    const RegistryStatus value_again = store->delete_value(key("Tree\\Other"), "v");
    EXPECT_EQ(value_again.code, reg_error::kFileNotFound);
    EXPECT_EQ(value_again.step, RegistryStep::Work);
    EXPECT_EQ(store->delete_key(key("tree\\a")).code, 0);
    EXPECT_EQ(store->open_key(key("Tree\\A\\B\\C")).code, reg_error::kFileNotFound);
    EXPECT_EQ(names("Tree"), Names{"Other"});
    EXPECT_EQ(get("Treetop", "v"), "1");
    EXPECT_EQ(store->delete_key(key("Tree\\A")).step, RegistryStep::Open);
    // A key made again after deletion starts empty.
    ASSERT_EQ(store->create_key(key("Tree\\A\\B")).code, 0);
    EXPECT_EQ(names("Tree\\A\\B", true), Names{});
    EXPECT_EQ(names("Tree\\A\\B"), Names{});
}

TEST_P(RegistryStoreContract, BatchKeepsEverything) {
    store->begin_batch();
    for (int i = 0; i < 500; ++i)
        ASSERT_EQ(set(std::string("Batch\\K").append(std::to_string(i % 7)),
                      std::string("v").append(std::to_string(i)), "x"),
                  0);
    ASSERT_EQ(store->delete_key(key("Batch\\K3")).code, 0);
    ASSERT_EQ(set("Batch\\K3", "again", "y"), 0);
    EXPECT_EQ(store->end_batch(), 0);
    EXPECT_EQ(names("Batch\\K3", true), Names{"again"});
    EXPECT_EQ(names("Batch\\K0", true).size(), 72u);
    EXPECT_EQ(store->end_batch(), 0);  // nothing open: nothing to do
}

std::vector<StoreFactory> stores() {
    std::vector<StoreFactory> out{[](const fs::path&) { return make_memory_registry_store(); }};
#ifndef _WIN32
    out.push_back([](const fs::path& dir) {
        return posix::make_sqlite_registry_store((dir / "registry.db").string());
    });
#endif
    return out;
}
INSTANTIATE_TEST_SUITE_P(Stores, RegistryStoreContract, ::testing::ValuesIn(stores()),
                         [](const auto& info) {
                             return std::string(info.index == 0 ? "Memory" : "Sqlite");
                         });

}  // namespace
}  // namespace quiller
