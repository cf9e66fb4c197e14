// The statements of this service.
#include "engine/engine.hpp"
#include "engine/statements.hpp"

namespace quiller::statements {

void copy(Engine& e) {
    not_available(e);
}
void del(Engine& e) {
    not_available(e);
}
void dir(Engine& e) {
    not_available(e);
}
void md(Engine& e) {
    not_available(e);
}
void rd(Engine& e) {
    not_available(e);
}
void rename(Engine& e) {
    not_available(e);
}
void setattrib(Engine& e) {
    not_available(e);
}

}  // namespace quiller::statements
