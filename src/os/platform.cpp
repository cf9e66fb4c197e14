#include "os/platform.hpp"

namespace quiller {

Platform make_platform() {
    Platform p;
    p.files = make_file_system();
    p.environment = make_environment();
    p.clock = make_clock();
    p.registry = make_registry_store();
    p.processes = make_processes();
    p.network = make_network();
    return p;
}

}  // namespace quiller
