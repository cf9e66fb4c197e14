// Files: the functions, condition tests and statements of the language table (language.cpp).
#pragma once

#include <string>

#include "engine/language.hpp"

namespace quiller {

namespace functions {
std::string dirsize(const FunctionCall&);
std::string fileopen(const FunctionCall&);
std::string fileread(const FunctionCall&);
std::string filesize(const FunctionCall&);
std::string getattrib(const FunctionCall&);
std::string replacestringinfile(const FunctionCall&);
}  // namespace functions

namespace conditions {
bool direxists(Engine&, const std::string& a, const std::string& b);
bool fileexists(Engine&, const std::string& a, const std::string& b);
bool filesame(Engine&, const std::string& a, const std::string& b);
}  // namespace conditions

namespace statements {
void fileclose(Engine&);
void filewrite(Engine&);
}  // namespace statements

}  // namespace quiller
