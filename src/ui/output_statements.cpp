// The output window's statements: `printtofile`, `printwindow`, `pause`.
#include "engine/engine.hpp"
#include "engine/statements.hpp"

namespace quiller::statements {

void printtofile(Engine& e) { not_available(e); }
void printwindow(Engine& e) { not_available(e); }
void pause(Engine& e) { not_available(e); }

}  // namespace quiller::statements
