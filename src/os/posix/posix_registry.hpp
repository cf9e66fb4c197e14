// The POSIX registry store: a SQLite database file.
#pragma once

#include <memory>
#include <string>

#include "os/registry_store.hpp"

namespace quiller::posix {

// Where the store lives: $QUILLER_REGISTRY, else $XDG_DATA_HOME/quiller/registry.db, else
// ~/.local/share/quiller/registry.db.
std::string registry_file_path();

// A store in the database file `path` (":memory:" for a private one in memory). Nothing is
// opened or created before the first call; the directory and the file (mode 0600) are made then.
std::unique_ptr<RegistryStore> make_sqlite_registry_store(std::string path);

}  // namespace quiller::posix
