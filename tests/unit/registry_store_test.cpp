// The registry stores' common contract, checked on every store of this build: the memory store
// and, on POSIX, the SQLite store in a scratch file.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>

#ifdef _WIN32
#include <process.h>
#define getpid _getpid
#else
#include <unistd.h>
#endif

#include "services/registry_store.hpp"
#include "services/registry_values.hpp"
#ifndef _WIN32
#include "services/posix/posix_registry.hpp"
#endif

namespace quiller {
namespace {

namespace fs = std::filesystem;

using StoreFactory = std::function<std::unique_ptr<RegistryStore>(const fs::path& dir)>;

class RegistryStoreContract : public ::testing::TestWithParam<StoreFactory> {
  protected:
    void SetUp() override {
        static int counter = 0;
        dir = fs::temp_directory_path() /
              ("quiller-store-" + std::to_string(::getpid()) + "-" + std::to_string(++counter));
        fs::remove_all(dir);
        fs::create_directories(dir);
        store = GetParam()(dir);
    }
    void TearDown() override {
        store.reset();
        std::error_code ec;
        fs::remove_all(dir, ec);
    }

    static RegistryKeyRef key(std::string_view subkey,
                              RegistryRoot root = RegistryRoot::CurrentUser) {
        return {{}, root, subkey};
    }
    int set(std::string_view subkey, std::string_view name, std::string_view text,
            std::uint32_t type = reg_type::kSz) {
        RegistryStatus s = store->create_key(key(subkey));
        if (s.ok()) s = store->set_value(key(subkey), name, data_from_text(text, type));
        return s.code;
    }
    std::string get(std::string_view subkey, std::string_view name) {
        RegistryData d;
        const RegistryStatus s = store->read_value(key(subkey), name, d);
        return s.ok() ? text_from_data(d) : "<" + std::to_string(s.code) + ">";
    }
    std::vector<std::string> keys(std::string_view subkey) {
        std::vector<std::string> out;
        std::string name;
        for (std::uint32_t i = 0; store->enum_key(key(subkey), i, name).ok(); ++i)
            out.push_back(name);
        return out;
    }
    std::vector<std::string> values(std::string_view subkey) {
        std::vector<std::string> out;
        std::string name;
        for (std::uint32_t i = 0; store->enum_value(key(subkey), i, name).ok(); ++i)
            out.push_back(name);
        return out;
    }

    fs::path dir;
    std::unique_ptr<RegistryStore> store;
};

using Names = std::vector<std::string>;

TEST_P(RegistryStoreContract, WriteAndReadBack) {
    EXPECT_EQ(set("Software\\Corvale", "Name", "Ada"), 0);
    EXPECT_EQ(get("Software\\Corvale", "Name"), "Ada");
    EXPECT_EQ(set("Software\\Corvale", "Count", "7", reg_type::kDword), 0);
    RegistryData d;
    ASSERT_TRUE(store->read_value(key("Software\\Corvale"), "count", d).ok());
    EXPECT_EQ(d.type, reg_type::kDword);
    EXPECT_EQ(d.bytes, std::string("\x07\0\0\0", 4));
    EXPECT_EQ(set("Software\\Corvale", "Name", "Grace"), 0);  // overwrite
    EXPECT_EQ(get("Software\\Corvale", "Name"), "Grace");
}

TEST_P(RegistryStoreContract, NamesAreCaseBlindAndKeepTheirCase) {
    EXPECT_EQ(set("Software\\ÄrgerCo", "Größe", "1"), 0);
    EXPECT_EQ(get("SOFTWARE\\ärgerco", "GRÖSSE"), "<2>");  // ß and SS are two names
    EXPECT_EQ(get("SOFTWARE\\ärgerco", "größe"), "1");
    EXPECT_EQ(get("software\\ÄRGERCO", "GRÖßE"), "1");
    EXPECT_EQ(keys("Software"), Names{"ÄrgerCo"});
    EXPECT_EQ(set("software\\ärgerco", "GRÖßE", "2"), 0);
    EXPECT_EQ(values("Software\\ÄrgerCo"), Names{"Größe"});  // the first spelling stays
}

TEST_P(RegistryStoreContract, MissingKeysAndValues) {
    RegistryData d;
    RegistryStatus s = store->read_value(key("Nowhere"), "x", d);
    EXPECT_EQ(s.code, reg_error::kFileNotFound);
    EXPECT_EQ(s.step, RegistryStep::Open);
    ASSERT_EQ(set("Here", "a", "1"), 0);
    s = store->read_value(key("Here"), "b", d);
    EXPECT_EQ(s.code, reg_error::kFileNotFound);
    EXPECT_EQ(s.step, RegistryStep::Work);
    EXPECT_EQ(store->open_key(key("Here")).code, 0);
    EXPECT_EQ(store->open_key(key("Nowhere")).code, reg_error::kFileNotFound);
    EXPECT_EQ(store->set_value(key("Nowhere"), "x", {reg_type::kSz, "1"}).code,
              reg_error::kFileNotFound);
}

TEST_P(RegistryStoreContract, RootsAreSeparate) {
    ASSERT_EQ(set("Shared", "v", "user"), 0);
    EXPECT_EQ(store->create_key(key("Shared", RegistryRoot::LocalMachine)).code, 0);
    EXPECT_EQ(store->open_key(key("Shared", RegistryRoot::Users)).code, reg_error::kFileNotFound);
    RegistryData d;
    EXPECT_EQ(store->read_value(key("Shared", RegistryRoot::LocalMachine), "v", d).code,
              reg_error::kFileNotFound);
}

TEST_P(RegistryStoreContract, RootItselfHoldsValues) {
    EXPECT_EQ(store->open_key(key("")).code, 0);
    EXPECT_EQ(set("", "AtRoot", "yes"), 0);
    EXPECT_EQ(get("", "AtRoot"), "yes");
    EXPECT_EQ(store->delete_key(key("")).code, reg_error::kAccessDenied);
}

TEST_P(RegistryStoreContract, BadNamesAndRoots) {
    EXPECT_EQ(store->create_key(key(std::string(300, 'k'))).code, reg_error::kInvalidParameter);
    EXPECT_EQ(store->create_key(key("a\\\\b")).code, reg_error::kInvalidParameter);
    EXPECT_EQ(store->create_key(key("a", RegistryRoot::None)).code, reg_error::kInvalidHandle);
    EXPECT_EQ(store->create_key({"\\\\server", RegistryRoot::LocalMachine, "a"}).code,
              reg_error::kBadNetPath);
    EXPECT_NE(store->connect("\\\\server", RegistryRoot::LocalMachine), 0);
    ASSERT_EQ(set("Ok", "v", "1"), 0);
    const RegistryStatus s =
        store->set_value(key("Ok"), std::string(16384, 'n'), {reg_type::kSz, "x"});
    EXPECT_EQ(s.code, reg_error::kInvalidParameter);
    EXPECT_EQ(s.step, RegistryStep::Work);
    EXPECT_EQ(keys(""), Names{"Ok"});  // nothing else was made
}

TEST_P(RegistryStoreContract, WriteValueMakesTheKey) {
    const RegistryData one = data_from_text("1", reg_type::kSz);
    EXPECT_TRUE(store->write_value(key("New\\Deep"), "v", one).ok());
    EXPECT_EQ(get("new\\deep", "V"), "1");
    const RegistryStatus bad_key = store->write_value(key("a\\\\b"), "v", one);
    EXPECT_EQ(bad_key.code, reg_error::kInvalidParameter);
    EXPECT_EQ(bad_key.step, RegistryStep::Open);
    const RegistryStatus bad_name = store->write_value(key("New"), std::string(16384, 'n'), one);
    EXPECT_EQ(bad_name.code, reg_error::kInvalidParameter);
    EXPECT_EQ(bad_name.step, RegistryStep::Work);
}

TEST_P(RegistryStoreContract, LargeValues) {
    const std::string big(1 << 20, 'x');
    ASSERT_EQ(set("Big", "v", big), 0);
    EXPECT_EQ(get("Big", "v"), big);
    RegistryData bytes{reg_type::kBinary, std::string("\0\1\0", 3)};
    ASSERT_TRUE(store->set_value(key("Big"), "bin", bytes).ok());
    RegistryData d;
    ASSERT_TRUE(store->read_value(key("Big"), "bin", d).ok());
    EXPECT_EQ(d.bytes, bytes.bytes);
    ASSERT_TRUE(store->set_value(key("Big"), "empty", {reg_type::kBinary, ""}).ok());
    ASSERT_TRUE(store->read_value(key("Big"), "empty", d).ok());
    EXPECT_EQ(d.bytes, "");
}

TEST_P(RegistryStoreContract, DefaultValue) {
    ASSERT_EQ(set("K", "", "unnamed"), 0);
    EXPECT_EQ(get("K", ""), "unnamed");
    ASSERT_EQ(set("K", "b", "2"), 0);
    EXPECT_EQ(values("K"), (Names{"", "b"}));
}

TEST_P(RegistryStoreContract, EnumerationIsCaseBlindAlphabetical) {
    for (const char* name : {"beta", "Alpha", "gamma", "ALPHA2", "Delta"})
        ASSERT_EQ(store->create_key(key(std::string("Order\\") + name)).code, 0);
    EXPECT_EQ(keys("Order"), (Names{"Alpha", "ALPHA2", "beta", "Delta", "gamma"}));
    for (const char* name : {"z", "B", "a", "C"}) ASSERT_EQ(set("Order", name, "1"), 0);
    EXPECT_EQ(values("Order"), (Names{"a", "B", "C", "z"}));
    std::string name;
    const RegistryStatus past = store->enum_key(key("Order"), 5, name);
    EXPECT_EQ(past.code, reg_error::kNoMoreItems);
    EXPECT_EQ(past.step, RegistryStep::Work);
    EXPECT_EQ(store->enum_key(key("Missing"), 0, name).code, reg_error::kFileNotFound);
}

TEST_P(RegistryStoreContract, DeleteValue) {
    ASSERT_EQ(set("K", "a", "1"), 0);
    EXPECT_EQ(store->delete_value(key("K"), "A").code, 0);
    EXPECT_EQ(get("K", "a"), "<2>");
    const RegistryStatus again = store->delete_value(key("K"), "a");
    EXPECT_EQ(again.code, reg_error::kFileNotFound);
    EXPECT_EQ(again.step, RegistryStep::Work);
    EXPECT_EQ(store->delete_value(key("Nope"), "a").step, RegistryStep::Open);
}

TEST_P(RegistryStoreContract, DeleteKeyTree) {
    ASSERT_EQ(set("Tree\\A\\B\\C", "deep", "1"), 0);
    ASSERT_EQ(set("Tree\\A", "v", "1"), 0);
    ASSERT_EQ(set("Tree\\Other", "v", "1"), 0);
    ASSERT_EQ(set("Treetop", "v", "1"), 0);
    EXPECT_EQ(store->delete_key(key("tree\\a")).code, 0);
    EXPECT_EQ(store->open_key(key("Tree\\A")).code, reg_error::kFileNotFound);
    EXPECT_EQ(store->open_key(key("Tree\\A\\B\\C")).code, reg_error::kFileNotFound);
    EXPECT_EQ(keys("Tree"), Names{"Other"});
    EXPECT_EQ(get("Treetop", "v"), "1");
    const RegistryStatus again = store->delete_key(key("Tree\\A"));
    EXPECT_EQ(again.code, reg_error::kFileNotFound);
    EXPECT_EQ(again.step, RegistryStep::Open);
    // A key made again after deletion starts empty.
    ASSERT_EQ(store->create_key(key("Tree\\A\\B")).code, 0);
    EXPECT_EQ(values("Tree\\A\\B"), Names{});
    EXPECT_EQ(keys("Tree\\A\\B"), Names{});
}

TEST_P(RegistryStoreContract, BatchKeepsEverything) {
    store->begin_batch();
    for (int i = 0; i < 500; ++i)
        ASSERT_EQ(set("Batch\\K" + std::to_string(i % 7), "v" + std::to_string(i), "x"), 0);
    ASSERT_EQ(store->delete_key(key("Batch\\K3")).code, 0);
    ASSERT_EQ(set("Batch\\K3", "again", "y"), 0);
    EXPECT_EQ(store->end_batch(), 0);
    EXPECT_EQ(values("Batch\\K3"), Names{"again"});
    EXPECT_EQ(values("Batch\\K0").size(), 72u);
    EXPECT_EQ(store->end_batch(), 0);  // nothing open: nothing to do
}

TEST_P(RegistryStoreContract, ErrorTexts) {
    const std::string t = store->error_text(reg_error::kFileNotFound);
    EXPECT_TRUE(t.ends_with("(2)")) << t;
}

std::unique_ptr<RegistryStore> memory_store(const fs::path&) {
    return make_memory_registry_store();
}

#ifndef _WIN32
std::unique_ptr<RegistryStore> sqlite_store(const fs::path& dir) {
    return posix::make_sqlite_registry_store((dir / "registry.db").string());
}
INSTANTIATE_TEST_SUITE_P(Stores, RegistryStoreContract,
                         ::testing::Values(StoreFactory(memory_store), StoreFactory(sqlite_store)),
                         [](const auto& info) {
                             return std::string(info.index == 0 ? "Memory" : "Sqlite");
                         });
#else
INSTANTIATE_TEST_SUITE_P(Stores, RegistryStoreContract,
                         ::testing::Values(StoreFactory(memory_store)),
                         [](const auto&) { return std::string("Memory"); });
#endif

}  // namespace
}  // namespace quiller
