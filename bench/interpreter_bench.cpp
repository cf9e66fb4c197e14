// Micro benchmarks of the interpreter's per-statement pieces: a line's plan filling its slots
// against substituting and splitting, comparisons with and without the facts kept beside a value,
// whole-number formatting, and what a long line read from a file costs the value tests.
#include <benchmark/benchmark.h>

#include <string>

#include "engine/program.hpp"
#include "expr/condition.hpp"
#include "value/text_facts.hpp"
#include "value/value.hpp"

namespace {

using namespace quiller;

bool no_test(Engine&, const std::string&, const std::string&) {
    return false;
}

const Language& language() {
    static const StatementRow statements[] = {
        {"set", "", nullptr, Domain::Engine, kAssignment},
        {"while", "", nullptr, Domain::ControlFlow, kOpensWhile | kCondition},
    };
    static const ConditionTestRow tests[] = {{"lessthan", no_test}, {"notequal", no_test}};
    static const Language l(statements, {}, tests);
    return l;
}

ProgramLine line_of(std::string keyword, std::string arguments) {
    ProgramLine line;
    line.keyword = std::move(keyword);
    line.arguments = std::move(arguments);
    prepare_program_line(line, language());
    return line;
}

// A line's slots filled from its plan: a condition and a `set` expression.
void BM_PlanFill(benchmark::State& state, const char* keyword, const char* arguments) {
    VariableTable vars;
    vars.set("i", "123456");
    const ProgramLine line = line_of(keyword, arguments);
    Slots shared;
    for (auto _ : state) benchmark::DoNotOptimize(line.plan->fill(vars, shared, kMaxTextLength));
}
BENCHMARK_CAPTURE(BM_PlanFill, Condition, "while", "$i$ < 1000000");
BENCHMARK_CAPTURE(BM_PlanFill, Set, "set", "$i$ $i$ + 1");

// The same line the long way: substitution, the operator rewriting, the splitter.
void BM_SubstituteAndSplitCondition(benchmark::State& state) {
    VariableTable vars;
    vars.set("i", "123456");
    const ProgramLine line = line_of("while", "$i$ < 1000000");
    std::string args, command, options;
    Slots slots;
    for (auto _ : state) {
        line.template_.expand(vars, args);
        command = line.keyword;
        normalise_condition(command, args);
        split_arguments(args, false, slots, options);
        benchmark::DoNotOptimize(slots);
    }
}
BENCHMARK(BM_SubstituteAndSplitCondition);

void BM_CompareFromText(benchmark::State& state) {
    const std::string a = "123456", b = "1000000";
    for (auto _ : state) benchmark::DoNotOptimize(compare_operands(a, b, 2024));
}
BENCHMARK(BM_CompareFromText);

void BM_CompareWithFacts(benchmark::State& state) {
    const std::string a = "123456", b = "1000000";
    const value::TextFacts fa, fb;
    for (auto _ : state) benchmark::DoNotOptimize(compare_operands(a, b, 2024, &fa, &fb));
}
BENCHMARK(BM_CompareWithFacts);

void BM_FormatWholeNumber(benchmark::State& state) {
    double v = 123456;
    for (auto _ : state) benchmark::DoNotOptimize(value::format_general_number(v));
}
BENCHMARK(BM_FormatWholeNumber);

// A line as bench/fileread.sh reads it: what a condition asks of it the first time.
const std::string kFileLine = "0000001 " + std::string(91, 'q');

void BM_LongLineShape(benchmark::State& state) {
    const std::uint16_t wanted = value::TextFacts::kDoubleQuote | value::TextFacts::kOperator;
    for (auto _ : state) benchmark::DoNotOptimize(value::text_shape(kFileLine, wanted));
}
BENCHMARK(BM_LongLineShape);

void BM_LongLineDateAndNumberTests(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(value::parse_date(kFileLine, 2024));
        benchmark::DoNotOptimize(value::is_numeric(kFileLine));
    }
}
BENCHMARK(BM_LongLineDateAndNumberTests);

}  // namespace
