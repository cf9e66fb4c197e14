// The argument splitter and "$"/"%" substitution.
#include <gtest/gtest.h>

#include <random>

#include "engine/splitter.hpp"
#include "engine/substitution.hpp"
#include "engine/variables.hpp"

namespace quiller {
namespace {

Slots split(std::string_view text, bool for_set = false, std::string* options = nullptr) {
    Slots slots;
    std::string opts;
    split_arguments(text, for_set, slots, opts);
    if (options) *options = opts;
    return slots;
}

TEST(Splitter, QuotesBlanksAndOptions) {
    std::string options;
    Slots s = split("  one 'two words' ^x y^ \"q\"  {Quiet Clear}", false, &options);
    EXPECT_EQ(s[1], "one");
    EXPECT_EQ(s[2], "two words");
    EXPECT_EQ(s[3], "x y");
    EXPECT_EQ(s[4], "q");
    EXPECT_EQ(s[5], "");
    EXPECT_EQ(options, "Quiet Clear");

    s = split("\"unclosed rest here", false, &options);  // the quote is dropped, the rest splits at blanks
    EXPECT_EQ(s[1], "unclosed");
    EXPECT_EQ(s[2], "rest");
    EXPECT_EQ(s[3], "here");

    s = split("{quiet}", false, &options);
    EXPECT_EQ(s[1], "");
    EXPECT_EQ(options, "quiet");
}

TEST(Splitter, ElevenSlotsAtMostAndSlotTwelveEmpty) {
    std::string options;
    Slots s = split("1 2 3 4 5 6 7 8 9 10 11 12 13 {quiet}", false, &options);
    EXPECT_EQ(s[11], "11");
    EXPECT_EQ(s[12], "");
    EXPECT_EQ(options, "");  // the rest of the line, braces included, is dropped
    s = split("1 2 3 4 5 6 7 8 9 10 11 {quiet}", false, &options);
    EXPECT_EQ(options, "quiet");
}

TEST(Splitter, SetKeepsQuotesForTheEvaluator) {
    Slots s = split("$x$ 5 + 3", true);
    EXPECT_EQ(s[1], "$x$");
    EXPECT_EQ(s[2], "\"5\"");
    EXPECT_EQ(s[3], "\"+\"");
    EXPECT_EQ(s[4], "\"3\"");
    s = split("$x$ 'abc' x ^d e^", true);
    EXPECT_EQ(s[2], "'abc'");
    EXPECT_EQ(s[3], "x");  // not an operator sign: left alone
    EXPECT_EQ(s[4], "^d e^");
    s = split("$x$ \"5\" '+'", true);  // one layer of quotes at most
    EXPECT_EQ(s[2], "\"5\"");
    EXPECT_EQ(s[3], "'+'");
    s = split("$x$ a +-", true);  // "+-" occurs within the operator signs
    EXPECT_EQ(s[3], "\"+-\"");
}

std::string lookup_a_b(std::string_view name) {
    if (name == "a") return "1";
    if (name == "b") return "$b$";
    if (name == "x") return "X";
    return "";
}

TEST(Substitution, DoubledDelimitersAndNoRecursion) {
    EXPECT_EQ(replace_references('$', "5$$", lookup_a_b).text, "5$");
    EXPECT_EQ(replace_references('$', "$$$x$", lookup_a_b).text, "$X");
    EXPECT_EQ(replace_references('$', "$a$$b$", lookup_a_b).text, "1$b$");
    EXPECT_EQ(replace_references('$', "[$b$]", lookup_a_b).text, "[$b$]");
    EXPECT_EQ(replace_references('$', "$nothing$.", lookup_a_b).text, ".");
    const SubstitutionResult r = replace_references('$', "$a$ costs 5$", lookup_a_b);
    EXPECT_TRUE(r.unclosed);
    EXPECT_EQ(r.text, "1 costs 5$");  // the text as it stood when the lone "$" was met
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

TEST(Variables, NamesIndexAndOrder) {
    VariableTable vars;
    vars.set("$Total$", "5");
    EXPECT_EQ(vars.get("TOTAL"), "5");
    EXPECT_EQ(vars.get("total "), "");  // reading does not trim
    vars.set("i", "3");
    vars.set("list[i]", "three");
    EXPECT_EQ(vars.get("list[3]"), "three");
    vars.set("list[j]", "empty index");
    EXPECT_EQ(vars.get("list[]"), "empty index");
    vars.set("m[n[k]]", "nested");  // the first bracket pair is resolved as a whole
    EXPECT_EQ(vars.name_at(vars.count() - 1), "m[]");
    vars.set("total", "");
    EXPECT_EQ(vars.count(), 5);
    EXPECT_EQ(vars.name_at(0), "total");
}

}  // namespace
}  // namespace quiller
