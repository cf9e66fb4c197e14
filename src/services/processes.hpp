// Programs, documents and the machine: starting and waiting for programs, opening documents with their associated application, shutdown, restart and log-off.
#pragma once

#include <memory>

namespace quiller {

class Processes {
public:
    virtual ~Processes() = default;
};

// The implementation for the platform this build targets.
std::unique_ptr<Processes> make_processes();

}  // namespace quiller
