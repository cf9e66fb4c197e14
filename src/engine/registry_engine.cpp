#include "engine/registry_engine.hpp"

#include <stdexcept>

#include "engine/engine.hpp"

namespace quiller {

RegistryOperations registry_operations(Engine& engine) {
    RegistryStore* store = engine.platform().registry.get();
    if (!store) throw std::logic_error("The platform was made without a registry store");
    return RegistryOperations(*store, [&engine](std::string_view message, std::string_view text) {
        engine.report_error(message, Severity::Warning, text);
    });
}

}  // namespace quiller
