// The temporary folder and temporary file names on Win32.
#include "os/win32/win32_handle.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

// The system's naming uses at most three characters of the prefix; path separators are left
// out so the name stays in the temporary folder.
std::wstring temp_stem(const std::string& prefix) {
    std::string stem;
    int characters = 0;
    for (const char c : prefix) {
        const bool starts_character = (static_cast<unsigned char>(c) & 0xC0) != 0x80;
        if (starts_character && characters == 3) break;
        if (c == '/' || c == '\\' || c == ':' || c == '\0') continue;
        characters += starts_character;
        stem += c;
    }
    return widen(stem);
}

}  // namespace

// As the system reports it (TMP, TEMP, the user's profile or the Windows folder), with its
// trailing "\".
std::string Win32Environment::temp_dir() {
    wchar_t buffer[MAX_PATH + 1];
    const DWORD n = GetTempPathW(MAX_PATH + 1, buffer);
    if (n == 0 || n > MAX_PATH) return {};
    return narrow(std::wstring_view(buffer, n));
}

// GetTempFileNameW: three characters of `prefix`, up to four hex digits and ".tmp";
// it creates the file, which is removed again unless `create` is set.
std::string Win32FileSystem::temp_file_name(const std::string& prefix, bool create) {
    wchar_t dir[MAX_PATH + 1];
    const DWORD n = GetTempPathW(MAX_PATH + 1, dir);
    if (n == 0 || n > MAX_PATH) return {};
    wchar_t name[MAX_PATH];
    if (GetTempFileNameW(dir, temp_stem(prefix).c_str(), 0, name) == 0) return {};
    if (!create) DeleteFileW(name);
    return narrow(name);
}

}  // namespace quiller::win32
