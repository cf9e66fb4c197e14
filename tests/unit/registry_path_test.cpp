// Registry paths (machine prefix, root, subkey, name limits) and the value conversions that the
// script tests (tests/scripts/registry_*.prg) don't reach: the rows of cases/registry.tsv.
#include <gtest/gtest.h>

#include "os/registry_path.hpp"
#include "os/registry_values.hpp"
#include "reference_table.hpp"

namespace quiller {
namespace {

using test::Cells;

const test::Operations kOperations = {
    {"path",
     [](const Cells& a) {
         const RegistryPath p = parse_registry_path(a[0]);
         EXPECT_EQ(registry_root(p.root_name), p.root) << a[0];
         return p.machine + "|" + p.root_name + "|" + p.subkey +
                (p.root == RegistryRoot::None ? "|unknown" : "");
     }},
    {"subkey",
     [](const Cells& a) {
         std::vector<std::string_view> names;
         if (!split_subkey(a[0], names)) return std::string("bad");
         std::string joined = std::to_string(names.size());
         for (std::string_view n : names) joined.append("|").append(n);
         return joined;
     }},
    {"dword", [](const Cells& a) { return std::to_string(dword_from_text(a[0])); }},
    {"text",
     [](const Cells& a) {
         return text_from_data({std::uint32_t(std::stoul(a[0])), a[1]});
     }},
    {"multi", [](const Cells& a) { return data_from_text(a[0], reg_type::kMultiSz).bytes; }},
    {"stored-name", [](const Cells& a) { return std::string(stored_value_name(a[0])); }},
};

TEST(RegistryCases, EveryRowOfTheTable) {
    test::check_case_table("registry.tsv", kOperations);
}

}  // namespace
}  // namespace quiller
