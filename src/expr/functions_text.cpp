// The text function group.
#include "expr/functions.hpp"

namespace quiller {

std::span<const FunctionDef> text_functions() { return {}; }

}  // namespace quiller
