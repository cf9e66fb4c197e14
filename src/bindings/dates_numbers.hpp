// Dates and numbers: the functions of the language table (language.cpp).
#pragma once

#include <string>

#include "engine/language.hpp"

namespace quiller {

namespace functions {
std::string date(const FunctionCall&);
std::string filedate(const FunctionCall&);
std::string random(const FunctionCall&);
std::string time(const FunctionCall&);
}  // namespace functions

}  // namespace quiller
