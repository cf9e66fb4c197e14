// The output window: the statements of the language table (language.cpp).
#pragma once

#include "engine/language.hpp"

namespace quiller {

namespace statements {
void pause(Engine&);
void print(Engine&);
void printtofile(Engine&);
void printwindow(Engine&);
}  // namespace statements

}  // namespace quiller
