// The registry operations of a run, reporting through the engine's error channel.
#pragma once

#include "os/registry_operations.hpp"

namespace quiller {

class Engine;

// Operations over the platform's registry store (made on first use when the platform has none),
// reporting each failure as a warning.
RegistryOperations registry_operations(Engine& engine);

}  // namespace quiller
