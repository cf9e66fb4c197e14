// The POSIX implementation of the registry store service.
#include "services/registry_store.hpp"

namespace quiller {

std::unique_ptr<RegistryStore> make_registry_store() { return std::make_unique<RegistryStore>(); }

}  // namespace quiller
