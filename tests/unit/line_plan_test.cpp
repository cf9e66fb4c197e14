// Line plans: a line run through its plan fills the slots the long way would fill.
#include <gtest/gtest.h>

#include <random>

#include "line_plan_check.hpp"

namespace quiller {
namespace {

std::unique_ptr<LinePlan> plan_of(std::string_view keyword, std::string_view arguments) {
    ProgramLine line;
    line.keyword = keyword;
    line.arguments = arguments;
    prepare_program_line(line, plan_check::language());
    return std::move(line.plan);
}

TEST(LinePlan, LoopLinesHavePlansThatStepAsideForAwkwardValues) {
    ASSERT_TRUE(plan_of("while", "$i$ < 1000000"));
    ASSERT_TRUE(plan_of("set", "$i$ $i$ + 1"));
    ASSERT_TRUE(plan_of("while", "\"$line$\" <> \"(eof)\""));
    EXPECT_FALSE(plan_of("print", "\"unclosed $a$"));
    EXPECT_FALSE(plan_of("print", "%path% $a$"));
    EXPECT_FALSE(plan_of("if", "n$a$ = 1"));  // the value decides whether "not" begins it

    VariableTable vars;
    Slots shared;
    const auto cond = plan_of("if", "$a$ < 5 {Quiet}");
    EXPECT_EQ(cond->option_text(), "quiet");
    for (const char* breaking : {"x y", "", "\"q", "a=b", "not", "{x"}) {
        vars.set("a", breaking);
        EXPECT_FALSE(cond->fill(vars, shared, kMaxTextLength)) << breaking;
    }
    vars.set("a", "12");
    const Slots* slots = cond->fill(vars, shared, kMaxTextLength);
    ASSERT_TRUE(slots);
    EXPECT_EQ((*slots)[1], "lessthan");
    EXPECT_EQ((*slots)[2], "12");
    EXPECT_TRUE(cond->facts().test);
    EXPECT_FALSE(cond->fill(vars, shared, 5));  // longer than the text limit
    const auto joined = plan_of("if", "1 >$a$= 2");  // empty, it would make ">="
    vars.set("a", "");
    EXPECT_FALSE(joined->fill(vars, shared, kMaxTextLength));
    vars.set("a", std::string(2000, '1'));      // long values go to the shared slots
    EXPECT_EQ(cond->fill(vars, shared, kMaxTextLength), &shared);
    EXPECT_EQ(shared[1], "lessthan");
}

// Random lines of literal words, quotes, references and operators against random values.
TEST(LinePlan, MatchesSubstitutionAndSplittingOnRandomLines) {
    const char* pieces[] = {"$a$", "$b$",   "\"$a$\"", "'$b$ x'", "^$a$^", "x$a$",   "$a$$b$",
                            "5",   "\"q\"", "<",       "<>",      "=",     ">=",     "not",
                            "N",   "+",     "-",       "{quiet}", "$$",    "$c[a]$", "equal",
                            "  ",  "'",     "{$a$}",   "1.5",     "abc"};
    const char* values[] = {"5",   "-3",   " 5",  "1.5", "1,5", "x y",        "",
                            "not", "no",   "n",   "\"",  "'",   "^",          "{",
                            "<",   "=",    "+",   "$x$", "'q'", "12/31/2001", "007",
                            "1e3", "&H1F", "ABC", "a",   "+-",  "10:30 PM",   "$"};
    const char* keywords[] = {"if", "while", "until", "set", "print"};
    std::mt19937 rng(14);
    auto pick = [&](auto& array) { return array[rng() % std::size(array)]; };
    for (int n = 0; n < 20000; ++n) {
        VariableTable vars;
        vars.set("a", pick(values));
        vars.set("b", rng() % 50 ? std::string(pick(values)) : std::string(1100, '7'));
        if (rng() % 2) vars.set("c[" + std::string(vars.get("a")) + "]", pick(values));
        std::string args = rng() % 4 == 0 ? "$t$ " : "";
        for (unsigned k = rng() % 7; k > 0; --k) args += std::string(pick(pieces)) + " ";
        const char* keyword = pick(keywords);
        ASSERT_EQ(plan_check::check(keyword, args, vars), "") << keyword << " " << args;
    }
}

}  // namespace
}  // namespace quiller
