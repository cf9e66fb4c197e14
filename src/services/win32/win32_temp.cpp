// The temporary folder and temporary file names on Win32.
#include "services/win32/win32_handle.hpp"
#include "services/win32/win32_platform.hpp"

namespace quiller::win32 {

// As the system reports it (TMP, TEMP, the user's profile or the Windows folder), with its
// trailing "\".
std::string Win32Environment::temp_dir() {
    wchar_t buffer[MAX_PATH + 1];
    const DWORD n = GetTempPathW(MAX_PATH + 1, buffer);
    if (n == 0 || n > MAX_PATH) return {};
    return narrow(std::wstring_view(buffer, n));
}

// GetTempFileNameW: the first three characters of `prefix`, up to four hex digits and ".tmp";
// it creates the file, which is removed again unless `create` is set.
std::string Win32FileSystem::temp_file_name(const std::string& prefix, bool create) {
    wchar_t dir[MAX_PATH + 1];
    const DWORD n = GetTempPathW(MAX_PATH + 1, dir);
    if (n == 0 || n > MAX_PATH) return {};
    wchar_t name[MAX_PATH];
    if (GetTempFileNameW(dir, widen(prefix).c_str(), 0, name) == 0) return {};
    if (!create) DeleteFileW(name);
    return narrow(name);
}

}  // namespace quiller::win32
