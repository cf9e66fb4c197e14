// The value of a `set` line: a literal, a two-operand expression (+ - * /), or a built-in function.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/line_plan.hpp"
#include "engine/splitter.hpp"

namespace quiller {

class Engine;

// True when word 2 is quoted (or a number the splitter quoted): the value is an expression, not
// a function's.
bool is_value_expression(const Slots& words);

// The value expression: words 2..4 (first operand, operator, second operand) as the splitter
// left them for `set`. Throws ScriptFailure on arithmetic failures. `facts` (when given) answer
// for the operands; `whole` receives the number when the result is a whole number written in the
// general form.
std::string eval_value_expression(const Slots& words, int current_year,
                                  const SlotFacts* facts = nullptr,
                                  std::optional<double>* whole = nullptr);

// Evaluates the value of a `set` line (word 2 names a function, or is a quoted/numeric operand).
std::string eval_string(Engine& engine, const Slots& words, std::string_view line_text);

}  // namespace quiller
