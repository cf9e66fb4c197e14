// `readinisection` and `writeini`.
#include "engine/engine.hpp"
#include "engine/statements.hpp"

namespace quiller::statements {

void readinisection(Engine& e) { not_available(e); }
void writeini(Engine& e) { not_available(e); }

}  // namespace quiller::statements
