// Directory synchronisation's statements beside `dirscan`: `dircopy`, `exclude` and `popup`
// (language.cpp).
#pragma once

#include "engine/language.hpp"

namespace quiller::statements {
void dircopy(Engine&);
void exclude(Engine&);
void popup(Engine&);
}  // namespace quiller::statements
