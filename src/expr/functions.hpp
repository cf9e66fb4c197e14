// The built-in function table of `set`. Each group of functions (text, dates and numbers, files,
// INI, questions, system) lives in its own file and hands its rows to the table.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "engine/splitter.hpp"

namespace quiller {

class Engine;

struct FunctionCall {
    Engine& engine;
    const Slots& words;          // word 2 is the name; words 3.. are the raw arguments
    std::string_view line_text;  // for option words found anywhere in the line
    // Argument n (1-based: a1 is word 3), unquoted.
    std::string_view arg(int n) const;
    // True when `word` occurs anywhere in the line (also inside another word or an argument).
    bool line_has(std::string_view word) const;
};

using FunctionHandler = std::string (*)(const FunctionCall&);

struct FunctionDef {
    std::string_view name;
    FunctionHandler run;
};

// The rows of each group; a group that is not built in this release returns no rows.
std::span<const FunctionDef> text_functions();
std::span<const FunctionDef> date_number_functions();
std::span<const FunctionDef> file_functions();
std::span<const FunctionDef> ini_functions();
std::span<const FunctionDef> question_functions();
std::span<const FunctionDef> system_functions();
std::span<const FunctionDef> registry_functions();
std::span<const FunctionDef> network_functions();

// The row of a function name (lower case), or nullptr.
const FunctionDef* find_function(std::string_view name);

// True for a name of the language's function table whose group this build lacks.
bool is_pending_function(std::string_view name);

}  // namespace quiller
