// Conditions of `if`, `ifnot`, `while` and `until`: the operator normaliser and the evaluator.
#pragma once

#include <string>

#include "engine/splitter.hpp"

namespace quiller {

class Engine;

// Rewrites a leading "not" into the command word and the first operator symbol found (by
// priority "<>", "<=", ">=", "=", "<", ">") into its test word. Returns true when the command
// word changed.
bool normalise_condition(std::string& command, std::string& condition);

// Runs the named test of slots 1..3 (test, operand A, operand B).
bool eval_boolean(Engine& engine, const Slots& words);

// The tests that ask a service: false on any failure. Implemented with their services.
bool registry_key_exists(Engine& engine, const std::string& path);
bool registry_value_exists(Engine& engine, const std::string& path, const std::string& name);
bool user_is_in_group(Engine& engine, const std::string& group);

// How two operands compare under the condition rules: date, then text, then number.
// Returns <0, 0 or >0.
int compare_operands(std::string_view a, std::string_view b, int current_year);

}  // namespace quiller
