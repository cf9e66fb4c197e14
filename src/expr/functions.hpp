// The value of a `set` line: a value expression, or a built-in function of the language's
// function table, called with the line's words.
#pragma once

#include <string>
#include <string_view>

#include "engine/language.hpp"
#include "engine/splitter.hpp"

namespace quiller {

class Engine;

struct FunctionCall {
    Engine& engine;
    const Slots& words;          // word 2 is the name; words 3.. are the raw arguments
    std::string_view line_text;  // for option words found anywhere in the line
    int arity;                   // of the function's row
    // Argument n (1-based: a1 is word 3), unquoted; empty beyond the function's arity.
    std::string_view arg(int n) const;
    // True when `word` occurs anywhere in the line (also inside another word or an argument).
    bool line_has(std::string_view word) const;
};

}  // namespace quiller
