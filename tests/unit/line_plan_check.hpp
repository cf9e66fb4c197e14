// Runs one program line both ways, through its plan and through substitution, condition
// rewriting and the splitter, and names the first difference. Shared by the unit test and the
// fuzz target of line plans.
#pragma once

#include <cmath>
#include <cstring>
#include <optional>
#include <string>

#include "engine/program.hpp"
#include "expr/condition.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller::plan_check {

inline bool no_test(Engine&, const std::string&, const std::string&) {
    return false;
}

// A language with the statements whose lines plans treat differently.
inline const Language& language() {
    static const StatementRow statements[] = {
        {"if", "", nullptr, Domain::ControlFlow, kOpensIf | kCondition},
        {"ifnot", "", nullptr, Domain::ControlFlow, kOpensIf},
        {"print", "clear insert", nullptr, Domain::Output},
        {"set", "", nullptr, Domain::Engine, kAssignment},
        {"until", "", nullptr, Domain::ControlFlow, kClosesRepeat | kCondition},
        {"while", "", nullptr, Domain::ControlFlow, kOpensWhile | kCondition},
    };
    static const ConditionTestRow tests[] = {
        {"equal", no_test}, {"lessthan", no_test}, {"notequal", no_test}};
    static const Language language(statements, {}, tests);
    return language;
}

inline bool same_number(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

inline std::string check_facts(const value::TextFacts& f, std::string_view text, int slot) {
    const std::string where = "slot " + std::to_string(slot) + " '" + std::string(text) + "': ";
    if (f.numeric(text) != value::is_numeric(text)) return where + "number test";
    if (!same_number(f.number(text), value::read_leading_number(text))) return where + "number";
    const std::optional<double> d = value::parse_date(text, 2024);
    const std::optional<double> fd = f.date(text, 2024);
    if (d.has_value() != fd.has_value() || (d && !same_number(*d, *fd))) return where + "date";
    return {};
}

// Empty when the plan (if the line has one and it holds for the variables) gives what the long
// way gives.
inline std::string check(std::string_view keyword, std::string_view arguments,
                         const VariableTable& variables) {
    ProgramLine line;
    line.keyword = keyword;
    line.arguments = arguments;
    prepare_program_line(line, language());
    if (!line.plan) return {};
    Slots shared;
    const Slots* filled = line.plan->fill(variables, shared, variables.text_limit());
    if (!filled) return {};
    const Slots& planned = *filled;
    const SlotFacts& facts = line.plan->facts();

    std::string args = line.arguments.substr(0, line.set_prefix_length);
    std::string rest;
    line.template_.expand(variables, rest);
    args += rest;
    std::string command = line.keyword;
    const StatementRow* row = line.statement;
    if (row->has(kCondition) && normalise_condition(command, args))
        row = language().statement(command);
    Slots slots;
    std::string options;
    split_arguments(args, row && row->has(kAssignment), slots, options);

    if (command != line.plan->keyword() || row != line.plan->row()) return "keyword " + command;
    if (text::to_lower(options) != line.plan->option_text()) return "options " + options;
    const bool for_set = row->has(kAssignment);
    for (int i = 1; i <= kSlotCount; ++i) {
        if (slots[i] != planned[i]) return "slot " + std::to_string(i) + " '" + slots[i] + "'";
        if (!facts.operand[i]) continue;
        const std::string_view operand = for_set ? text::unquote(slots[i]) : slots[i];
        if (std::string e = check_facts(*facts.operand[i], operand, i); !e.empty()) return e;
    }
    if (facts.test && facts.test != language().test(text::to_lower(slots[1]))) return "test";
    return {};
}

}  // namespace quiller::plan_check
