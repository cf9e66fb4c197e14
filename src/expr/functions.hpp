// The built-in function table of `set`: name, handler. Names are matched in lower case.
#pragma once

#include <string>
#include <string_view>

#include "engine/splitter.hpp"

namespace quiller {

class Engine;

struct FunctionCall {
    Engine& engine;
    const Slots& words;          // word 2 is the name; words 3.. are the raw arguments
    std::string_view line_text;  // for option words found anywhere in the line
    // Argument n (1-based), unquoted.
    std::string_view arg(int n) const;
};

using FunctionHandler = std::string (*)(const FunctionCall&);

struct FunctionDef {
    std::string_view name;
    FunctionHandler run;  // nullptr: the function arrives in a later release
};

// The row of a function name (lower case), or nullptr.
const FunctionDef* find_function(std::string_view name);

}  // namespace quiller
