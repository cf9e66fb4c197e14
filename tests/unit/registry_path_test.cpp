// Registry paths (machine prefix, root, subkey, name limits), the value conversions and the
// export files' entries, encodings and bad lines that the script tests (tests/scripts/
// registry_*.prg) don't reach: the rows of cases/registry.tsv.
#include <gtest/gtest.h>

#include "os/registry_file.hpp"
#include "os/registry_path.hpp"
#include "os/registry_values.hpp"
#include "reference_table.hpp"

namespace quiller {
namespace {

using test::Cells;
using Kind = RegistryFileEntry::Kind;

// An export file's entries and bad lines in file order, each "LINE [KEY]", "LINE [-KEY]",
// "LINE NAME=TYPE:TEXT", "LINE NAME=-" or "LINE ! PROBLEM", joined by " | ".
std::string registry_file(std::string_view bytes) {
    std::string out;
    const auto add = [&](int line, const std::string& text) {
        out.append(out.empty() ? "" : " | ").append(std::to_string(line)).append(" " + text);
    };
    const auto entry = [&](const RegistryFileEntry& e) {
        if (e.kind == Kind::Key || e.kind == Kind::DeleteKey)
            return (e.kind == Kind::Key ? "[" : "[-") + e.key + "]";
        if (e.kind == Kind::DeleteValue) return e.name + "=-";
        return e.name + "=" + std::to_string(e.data.type) + ":" + text_from_data(e.data);
    };
    read_registry_file(bytes,
                       {[&](const RegistryFileEntry& e) { add(e.line, entry(e)); },
                        [&](int line, std::string_view p) { add(line, "! " + std::string(p)); }});
    return out;
}

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
    {"file", [](const Cells& a) { return registry_file(a[0]); }},
    {"file-text",
     [](const Cells& a) {
         bool utf16 = false;
         const std::string text = registry_file_text(a[0], utf16);
         return text + (utf16 ? " (UTF-16)" : "");
     }},
};

TEST(RegistryCases, EveryRowOfTheTable) {
    test::check_case_table("registry.tsv", kOperations);
}

TEST(RegistryFile, BinaryJunkNeverCrashes) {
    std::string junk;
    for (int i = 0; i < 5000; ++i) junk += static_cast<char>((i * 7919) % 256);
    EXPECT_NE(registry_file(junk).find("! "), std::string::npos);
}

}  // namespace
}  // namespace quiller
