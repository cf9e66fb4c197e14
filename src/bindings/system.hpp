// The system: the functions and statements of the language table (language.cpp).
#pragma once

#include <string>

#include "engine/language.hpp"

namespace quiller {

namespace functions {
std::string diskspace(const FunctionCall&);
std::string getmemavail(const FunctionCall&);
std::string getmemtotal(const FunctionCall&);
std::string gettempdir(const FunctionCall&);
std::string gettempfile(const FunctionCall&);
}  // namespace functions

namespace statements {
void environment(Engine&);
}  // namespace statements

}  // namespace quiller
