// The ini function group.
#include "expr/functions.hpp"

namespace quiller {

std::span<const FunctionDef> ini_functions() { return {}; }

}  // namespace quiller
