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

std::wstring widen(std::string_view utf8) {
    if (utf8.empty()) return {};
    const int size = static_cast<int>(utf8.size());
    const int n = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
    std::wstring w(static_cast<std::size_t>(n), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, w.data(), n);
    return w;
}

std::string narrow(std::wstring_view wide) {
    if (wide.empty()) return {};
    const int size = static_cast<int>(wide.size());
    const int n = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string s(static_cast<std::size_t>(n), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, s.data(), n, nullptr, nullptr);
    return s;
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
