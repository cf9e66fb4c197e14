#include "expr/functions.hpp"

#include "engine/engine.hpp"
#include "expr/set_expression.hpp"
#include "value/text.hpp"

namespace quiller {

std::string_view FunctionCall::arg(int n) const {
    const int word = n + 2;
    return n <= arity && word <= kSlotCount ? text::unquote(words[word]) : std::string_view{};
}

bool FunctionCall::line_has(std::string_view word) const {
    return text::ifind(line_text, word) != std::string_view::npos;
}

std::string eval_string(Engine& engine, const Slots& words, std::string_view line_text) {
    const std::string_view word2 = words[2];
    const SlotFacts* facts = engine.facts_for(words);
    if (is_value_expression(words))
        return eval_value_expression(words, engine.current_year(), facts);

    const FunctionRow* f = facts && facts->function
                               ? facts->function
                               : engine.language().function(text::to_lower(text::trim(word2)));
    if (f) {
        if (f->run) return f->run(FunctionCall{engine, words, line_text, f->arity});
        engine.report_error(
            "(EvalString) : " + text::to_lower(text::trim(word2)) + " is not available yet",
            Severity::Warning);
        return {};
    }
    std::string message =
        "(EvalString) : " + words[2] + " " + words[3] + " " + words[4] + " " + words[5];
    message += kLineBreak;
    message += "Unrecognized command : ";
    message += line_text;
    engine.report_error(message, Severity::Warning);
    return {};
}

}  // namespace quiller
