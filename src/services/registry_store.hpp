// The registry: keys and typed values under the four roots, on this machine or another (on POSIX a durable SQLite store).
#pragma once

#include <memory>

namespace quiller {

class RegistryStore {
public:
    virtual ~RegistryStore() = default;
};

// The implementation for the platform this build targets.
std::unique_ptr<RegistryStore> make_registry_store();

}  // namespace quiller
