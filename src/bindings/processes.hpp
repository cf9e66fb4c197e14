// Processes: the statements of the language table (language.cpp).
#pragma once

#include "engine/language.hpp"

namespace quiller {

namespace statements {
void shell(Engine&);
void shutdown(Engine&);
void web(Engine&);
}  // namespace statements

}  // namespace quiller
