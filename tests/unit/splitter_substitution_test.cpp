// The argument splitter and "$"/"%" substitution.
#include <gtest/gtest.h>

#include <random>

#include "engine/splitter.hpp"
#include "engine/substitution.hpp"
#include "engine/variables.hpp"
#include "reference_table.hpp"

namespace quiller {
namespace {

// Slots 1 to 12 joined by "|" up to the last one that isn't empty, then " {options}" if any.
std::string split(std::string_view text, bool for_set) {
    Slots slots;
    std::string options;
    split_arguments(text, for_set, slots, options);
    std::string out;
    for (int i = 1; i <= kSlotCount; ++i) out += (i > 1 ? "|" : "") + slots[i];
    out.erase(out.find_last_not_of('|') + 1);
    return options.empty() ? out : out + " {" + options + "}";
}

std::string lookup_a_b(std::string_view name) {
    if (name == "a") return "1";
    if (name == "b") return "$b$";
    if (name == "x") return "X";
    return "";
}

TEST(SplitterAndSubstitution, EveryRowOfTheTable) {
    test::check_case_table("splitter.tsv",
                           {{"split", [](const test::Cells& a) { return split(a[0], false); }},
                            {"split-set", [](const test::Cells& a) { return split(a[0], true); }},
                            {"substitute", [](const test::Cells& a) {
                                 const SubstitutionResult r =
                                     replace_references('$', a[0], lookup_a_b);
                                 return r.unclosed ? r.text + " (unclosed)" : r.text;
                             }}});
}

// The per-line template must give exactly what the substitution routine gives.
TEST(Substitution, TemplateMatchesTheRoutine) {
    VariableTable vars;
    vars.set("a", "1");
    vars.set("b", "$b$");
    vars.set("list[2]", "two");
    vars.set("i", "2");
    auto lookup = [&](std::string_view n) { return vars.get(n); };
    std::mt19937 rng(7);
    const char alphabet[] = "ab$[]i list2 ";
    for (int n = 0; n < 20000; ++n) {
        std::string text;
        const int len = static_cast<int>(rng() % 14);
        for (int k = 0; k < len; ++k) text += alphabet[rng() % (sizeof alphabet - 1)];
        SubstitutionTemplate t;
        t.build(text);
        const SubstitutionResult r = replace_references('$', text, lookup);
        ASSERT_EQ(t.closed(), !r.unclosed) << text;
        if (!t.closed()) continue;
        std::string out;
        t.expand(vars, out);
        ASSERT_EQ(out, r.text) << text;
    }
}

// Names without case and the index forms as a script sees them: variables_and_substitution.prg.
TEST(Variables, NamesIndexAndOrder) {
    VariableTable vars;
    vars.set("$Total$", "5");
    EXPECT_EQ(vars.get("total "), "");  // reading does not trim
    vars.set("i", "3");
    vars.set("list[i]", "three");
    vars.set("list[j]", "empty index");
    vars.set("m[n[k]]", "nested");  // the first bracket pair is resolved as a whole
    EXPECT_EQ(vars.name_at(vars.count() - 1), "m[]");
    vars.set("total", "");
    EXPECT_EQ(vars.count(), 5);
    EXPECT_EQ(vars.name_at(0), "total");
}

}  // namespace
}  // namespace quiller
