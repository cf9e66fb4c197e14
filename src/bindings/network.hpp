// The network and accounts: the functions, condition tests and statements of the language table
// (language.cpp).
#pragma once

#include <string>

#include "engine/language.hpp"

namespace quiller {

namespace functions {
std::string connectedhow(const FunctionCall&);
std::string connectedto(const FunctionCall&);
std::string getnetcomputerdomain(const FunctionCall&);
std::string getnetcomputername(const FunctionCall&);
std::string getnetdc(const FunctionCall&);
std::string getnethostname(const FunctionCall&);
std::string getnetipaddress(const FunctionCall&);
std::string getnetuserdomain(const FunctionCall&);
std::string getnetusername(const FunctionCall&);
std::string netuse(const FunctionCall&);
std::string netusedel(const FunctionCall&);
}  // namespace functions

namespace conditions {
bool isingroup(Engine&, const std::string& a, const std::string& b);
}  // namespace conditions

namespace statements {
void addprinter(Engine&);
void sendkeys(Engine&);
}  // namespace statements

}  // namespace quiller
