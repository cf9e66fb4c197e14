// The language of Quiller scripts: its statement, function and condition-test tables, handed to
// the engine by the programs that run scripts.
#pragma once

#include "engine/language.hpp"

namespace quiller {

const Language& standard_language();

}  // namespace quiller
