// The date_number function group.
#include "expr/functions.hpp"

namespace quiller {

std::span<const FunctionDef> date_number_functions() { return {}; }

}  // namespace quiller
