// Environment variables and the operating-system family on Win32.
#include "os/win32/win32_handle.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {

std::string Win32Environment::get(const std::string& name) {
    const std::wstring wide_name = widen(name);
    std::wstring value(256, L'\0');
    for (;;) {
        const DWORD n = GetEnvironmentVariableW(wide_name.c_str(), value.data(),
                                                static_cast<DWORD>(value.size()));
        if (n == 0) return {};
        if (n < value.size()) {
            value.resize(n);
            return narrow(value);
        }
        value.resize(n);  // n counts the NUL when the buffer was too small
    }
}

// Platform identifier 1 is the Windows 95 family, 2 the Windows NT family.
std::string Win32Environment::os_family() {
    OSVERSIONINFOA info{};
    info.dwOSVersionInfoSize = sizeof info;
    if (!GetVersionExA(&info)) return {};
    switch (info.dwPlatformId) {
        case 1:
            return "Windows95";
        case 2:
            return "Windows NT";
        default:
            return {};
    }
}

}  // namespace quiller::win32
