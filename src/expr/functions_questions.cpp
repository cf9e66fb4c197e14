// The question function group.
#include "expr/functions.hpp"

namespace quiller {

std::span<const FunctionDef> question_functions() { return {}; }

}  // namespace quiller
