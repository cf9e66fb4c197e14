// Texts: the functions of the language table (language.cpp).
#pragma once

#include <string>

#include "engine/language.hpp"

namespace quiller {

namespace functions {
std::string asc(const FunctionCall&);
std::string chr(const FunctionCall&);
std::string decode(const FunctionCall&);
std::string encode(const FunctionCall&);
std::string find(const FunctionCall&);
std::string findrev(const FunctionCall&);
std::string lcase(const FunctionCall&);
std::string len(const FunctionCall&);
std::string mid(const FunctionCall&);
std::string replacestring(const FunctionCall&);
std::string trim(const FunctionCall&);
std::string ucase(const FunctionCall&);
std::string word(const FunctionCall&);
}  // namespace functions

}  // namespace quiller
