// The registry statements.
#include "engine/engine.hpp"
#include "engine/statements.hpp"
#include "os/registry.hpp"
#include "engine/registry_engine.hpp"
#include "bindings/registry_load.hpp"

namespace quiller::statements {

// `writereg KEYPATH VALUENAME VALUE [TYPE]`: TYPE is REG_SZ (the default), REG_EXPAND_SZ,
// REG_MULTI_SZ (items separated by "|") or REG_DWORD; the key is created as needed.
void writereg(Engine& e) {
    RegistryOperations ops = registry_operations(e);
    Registry reg(ops);
    reg.key = e.slots()[1];
    reg.value = e.slots()[2];
    reg.contents = e.slots()[3];
    reg.contents_type = e.slots()[4];
    reg.write_contents();
}

// `delregkey KEYPATH`: deletes the key with all its subkeys and values.
void delregkey(Engine& e) {
    RegistryOperations ops = registry_operations(e);
    Registry reg(ops);
    reg.key = e.slots()[1];
    reg.del_key();
}

// `delregvalue KEYPATH VALUENAME`.
void delregvalue(Engine& e) {
    RegistryOperations ops = registry_operations(e);
    Registry reg(ops);
    reg.key = e.slots()[1];
    reg.value = e.slots()[2];
    reg.del_value();
}

// `loadreg FILE`: loads a registry export file (REGEDIT4 or version 5.00).
void loadreg(Engine& e) {
    load_registry_file(e, e.slots()[1]);
}

}  // namespace quiller::statements
