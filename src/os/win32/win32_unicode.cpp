// UTF-8 / UTF-16 conversion and the long-path form of file names.
#include "os/win32/win32_handle.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

// The longest path the functions take without the "\\?\" prefix (MAX_PATH less the NUL).
constexpr std::size_t kMaxPlainPath = MAX_PATH - 1;

}  // namespace

std::wstring full_path(const std::wstring& path) {
    const DWORD n = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (n == 0) return path;
    std::wstring full(n, L'\0');
    const DWORD written = GetFullPathNameW(path.c_str(), n, full.data(), nullptr);
    if (written == 0 || written >= n) return path;
    full.resize(written);
    return full;
}

std::wstring native_path(std::string_view utf8_path) {
    std::wstring w = widen(utf8_path);
    if (w.size() <= kMaxPlainPath || w.starts_with(L"\\\\?\\") || w.starts_with(L"\\\\.\\"))
        return w;
    const std::wstring full = full_path(w);  // also turns "/" into "\" and resolves "." and ".."
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + full.substr(2);
    return L"\\\\?\\" + full;
}

}  // namespace quiller::win32
