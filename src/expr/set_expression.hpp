// The value of a `set` line: a literal, a two-operand expression (+ - * /), or a built-in function.
#pragma once

#include <string>
#include <string_view>

#include "engine/splitter.hpp"

namespace quiller {

class Engine;

// The value expression: words 2..4 (first operand, operator, second operand) as the splitter
// left them for `set`. Throws ScriptFailure on arithmetic failures.
std::string eval_value_expression(const Slots& words, int current_year);

// Evaluates the value of a `set` line (word 2 names a function, or is a quoted/numeric operand).
std::string eval_string(Engine& engine, const Slots& words, std::string_view line_text);

}  // namespace quiller
