// INI files: the functions and statements of the language table (language.cpp).
#pragma once

#include <string>

#include "engine/language.hpp"

namespace quiller {

namespace functions {
std::string readini(const FunctionCall&);
}  // namespace functions

namespace statements {
void readinisection(Engine&);
void writeini(Engine&);
}  // namespace statements

}  // namespace quiller
