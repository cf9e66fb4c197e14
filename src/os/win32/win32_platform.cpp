// The set of Win32 services one run uses.
#include "os/win32/win32_platform.hpp"
#include "os/file_operations.hpp"
#include "os/network.hpp"
#include "os/processes.hpp"
#include "os/registry_store.hpp"
#include "os/win32/win32_regional.hpp"

namespace quiller {

Platform make_platform() {
    win32::use_user_conventions();  // numbers and dates follow the user's regional settings
    Platform p;
    p.files = std::make_unique<win32::Win32FileSystem>();
    p.environment = std::make_unique<win32::Win32Environment>();
    p.clock = std::make_unique<win32::Win32Clock>();
    p.registry = make_registry_store();
    p.processes = make_processes();
    p.file_operations = make_file_operations();
    p.network = make_network();
    return p;
}

}  // namespace quiller
