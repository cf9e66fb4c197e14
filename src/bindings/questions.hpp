// Questions: the functions of the language table (language.cpp).
#pragma once

#include <string>

#include "engine/language.hpp"

namespace quiller {

namespace functions {
std::string ask(const FunctionCall&);
std::string askyesno(const FunctionCall&);
}  // namespace functions

}  // namespace quiller
