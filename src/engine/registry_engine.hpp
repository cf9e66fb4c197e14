// The registry operations of a run, reporting through the engine's error channel.
#pragma once

#include "os/registry_operations.hpp"

namespace quiller {

class Engine;

// Operations over the platform's registry store, reporting each failure as a warning. A platform
// without a store is a mistake of the program that made it (tests give a store of their own), so
// it ends in an exception rather than in the user's real store.
RegistryOperations registry_operations(Engine& engine);

}  // namespace quiller
