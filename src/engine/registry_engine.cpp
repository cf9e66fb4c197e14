#include "engine/registry_engine.hpp"

#include "engine/engine.hpp"

namespace quiller {

RegistryOperations registry_operations(Engine& engine) {
    std::unique_ptr<RegistryStore>& store = engine.platform().registry;
    if (!store) store = make_registry_store();
    return RegistryOperations(*store, [&engine](std::string_view message, std::string_view text) {
        engine.report_error(message, Severity::Warning, text);
    });
}

}  // namespace quiller
