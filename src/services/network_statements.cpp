// The statements of this service.
#include "engine/engine.hpp"
#include "engine/statements.hpp"

namespace quiller::statements {

void addprinter(Engine& e) {
    not_available(e);
}
void sendkeys(Engine& e) {
    not_available(e);
}

}  // namespace quiller::statements
