// The statements of this service.
#include "engine/engine.hpp"
#include "engine/statements.hpp"

namespace quiller::statements {

void writereg(Engine& e) {
    not_available(e);
}
void delregkey(Engine& e) {
    not_available(e);
}
void delregvalue(Engine& e) {
    not_available(e);
}
void loadreg(Engine& e) {
    not_available(e);
}

}  // namespace quiller::statements
