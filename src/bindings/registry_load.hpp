// `loadreg`: a registry export file applied to the registry.
#pragma once

#include <string>

namespace quiller {

class Engine;

// Reads FILE and applies its keys and values in order, as one batch. A file that can't be read
// and each bad line are warnings ("(LoadReg) ..."); the rest of the file still loads.
void load_registry_file(Engine& engine, const std::string& file);

}  // namespace quiller
