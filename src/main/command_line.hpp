// Joins program arguments into the one command-line text the language's splitter reads.
#pragma once

#include <string>

namespace quiller {

// Each argument with a blank, or an empty one, is wrapped in double quotes (in "'" or "^" when
// it holds a double quote itself).
std::string join_command_line(int argc, const char* const* argv);

}  // namespace quiller
