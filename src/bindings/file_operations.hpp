// File operations: the statements of the language table (language.cpp).
#pragma once

#include "engine/language.hpp"

namespace quiller {

namespace statements {
void copy(Engine&);
void del(Engine&);
void dir(Engine&);
void md(Engine&);
void rd(Engine&);
void rename(Engine&);
void setattrib(Engine&);
}  // namespace statements

}  // namespace quiller
