// The POSIX implementation of the processes service.
#include "services/processes.hpp"

namespace quiller {

std::unique_ptr<Processes> make_processes() { return std::make_unique<Processes>(); }

}  // namespace quiller
