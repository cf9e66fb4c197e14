// The registry: the functions, condition tests and statements of the language table (language.cpp).
#pragma once

#include <string>

#include "engine/language.hpp"

namespace quiller {

namespace functions {
std::string enumregkeys(const FunctionCall&);
std::string enumregvalues(const FunctionCall&);
std::string readreg(const FunctionCall&);
std::string regvaluetype(const FunctionCall&);
}  // namespace functions

namespace conditions {
bool regkeyexists(Engine&, const std::string& a, const std::string& b);
bool regvalueexists(Engine&, const std::string& a, const std::string& b);
}  // namespace conditions

namespace statements {
void delregkey(Engine&);
void delregvalue(Engine&);
void loadreg(Engine&);
void writereg(Engine&);
}  // namespace statements

}  // namespace quiller
