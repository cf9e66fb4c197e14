// The console's debugger, for a terminal: the listing around the line (numbered and indented as
// the debugger window's), the variables, and one key for Step, Continue or Terminate.
#pragma once

#include <cstdio>

#include "ui/host.hpp"

namespace quiller {

// Shows the stop on `err` and reads one key from the terminal `in`: s, Enter or space Step;
// c Continue; t or q Terminate. The end of the input continues.
DebugAction console_debug_stop(const DebugView& view, std::FILE* in, std::FILE* err);

}  // namespace quiller
