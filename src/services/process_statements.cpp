// The statements of this service.
#include "engine/engine.hpp"
#include "engine/statements.hpp"

namespace quiller::statements {

void shell(Engine& e) {
    not_available(e);
}
void web(Engine& e) {
    not_available(e);
}
void shutdown(Engine& e) {
    not_available(e);
}

}  // namespace quiller::statements
