// The file function group.
#include "expr/functions.hpp"

namespace quiller {

std::span<const FunctionDef> file_functions() { return {}; }

}  // namespace quiller
