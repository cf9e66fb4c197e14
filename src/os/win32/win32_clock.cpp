// The clock on Win32.
#include <chrono>

#include "value/value.hpp"
#include "os/win32/win32_handle.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {

double Win32Clock::now() {
    SYSTEMTIME t{};
    GetLocalTime(&t);
    return value::date_serial(t.wYear, t.wMonth, t.wDay) +
           value::time_serial(t.wHour, t.wMinute, t.wSecond);
}

std::int64_t Win32Clock::utc_seconds() {
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    return unix_seconds(now);
}

double Win32Clock::monotonic_seconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

void Win32Clock::sleep_ms(int ms) {
    Sleep(ms > 0 ? static_cast<DWORD>(ms) : 0);
}

}  // namespace quiller::win32
