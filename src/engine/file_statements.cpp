// `filewrite` and `fileclose`: the statements over files opened by `fileopen`.
#include "engine/engine.hpp"
#include "engine/statements.hpp"

namespace quiller::statements {

void filewrite(Engine& e) { not_available(e); }
void fileclose(Engine& e) { not_available(e); }

}  // namespace quiller::statements
