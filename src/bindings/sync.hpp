// Directory synchronisation: the statements of the language table (language.cpp).
#pragma once

#include "engine/language.hpp"

namespace quiller {

namespace statements {
void dirscan(Engine&);
}  // namespace statements

}  // namespace quiller
