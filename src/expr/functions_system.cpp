// The system function group.
#include "expr/functions.hpp"

namespace quiller {

std::span<const FunctionDef> system_functions() { return {}; }

}  // namespace quiller
