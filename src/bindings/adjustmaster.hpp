// Directory synchronisation's two-way step: the function `adjustmaster` (language.cpp).
#pragma once

#include <string>

#include "engine/language.hpp"

namespace quiller::functions {
std::string adjustmaster(const FunctionCall&);
}  // namespace quiller::functions
