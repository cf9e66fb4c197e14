// Conditions of `if`, `ifnot`, `while` and `until`: the operator normaliser and the evaluator.
#pragma once

#include <string>

#include "engine/splitter.hpp"
#include "value/text_facts.hpp"

namespace quiller {

class Engine;

// Rewrites a leading "not" into the command word and the first operator symbol found (by
// priority "<>", "<=", ">=", "=", "<", ">") into its test word. Returns true when the command
// word changed.
bool normalise_condition(std::string& command, std::string& condition);

// Runs the condition test named in slot 1 on operands A and B (slots 2 and 3).
bool eval_boolean(Engine& engine, const Slots& words);

// How two operands compare under the condition rules: date, then text, then number.
// Returns <0, 0 or >0. The facts of an operand, when given, answer for its text.
int compare_operands(std::string_view a, std::string_view b, int current_year,
                     const value::TextFacts* facts_a = nullptr,
                     const value::TextFacts* facts_b = nullptr);

// The comparison tests, the words that normalise_condition writes for "=", "<>" and the others.
namespace conditions {
bool equal(Engine&, const std::string& a, const std::string& b);
bool greaterthan(Engine&, const std::string& a, const std::string& b);
bool greaterthanorequal(Engine&, const std::string& a, const std::string& b);
bool lessthan(Engine&, const std::string& a, const std::string& b);
bool lessthanorequal(Engine&, const std::string& a, const std::string& b);
bool notequal(Engine&, const std::string& a, const std::string& b);
}  // namespace conditions

}  // namespace quiller
