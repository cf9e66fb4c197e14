// The set of Win32 services one run uses.
#include "services/win32/win32_platform.hpp"

namespace quiller {

Platform make_platform() {
    Platform p;
    p.files = std::make_unique<win32::Win32FileSystem>();
    p.environment = std::make_unique<win32::Win32Environment>();
    p.clock = std::make_unique<win32::Win32Clock>();
    return p;
}

}  // namespace quiller
