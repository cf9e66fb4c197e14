// The name order on Windows: the NLS sort keys of the invariant locale with NORM_IGNORECASE;
// folding is the invariant lower-case mapping, character by character.
#ifdef _WIN32
#include <windows.h>

#include <vector>

#include "os/win32/win32_platform.hpp"
#include "sync/name_order_platform.hpp"
#include "value/text.hpp"

namespace quiller::sync::platform {
namespace {

std::wstring map_string(DWORD flags, const std::wstring& text, std::size_t capacity) {
    std::wstring out(capacity, L'\0');
    const int n =
        LCMapStringEx(LOCALE_NAME_INVARIANT, flags, text.data(), static_cast<int>(text.size()),
                      out.data(), static_cast<int>(out.size()), nullptr, nullptr, 0);
    out.resize(n > 0 ? static_cast<std::size_t>(n) : 0);
    return out;
}

}  // namespace

void append_folded(std::string_view name, std::string& out) {
    if (!text::is_valid_utf8(name)) {  // ill-formed bytes stay as they are, ASCII is lowered
        for (const char c : name) out += (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 32) : c;
        return;
    }
    const std::wstring wide = win32::widen(name);
    out += win32::narrow(map_string(LCMAP_LOWERCASE, wide, wide.size()));
}

void append_collation_key(std::string_view folded, std::string& key) {
    const std::wstring wide = win32::widen(folded);
    const DWORD flags = LCMAP_SORTKEY | NORM_IGNORECASE;
    const int n = LCMapStringEx(LOCALE_NAME_INVARIANT, flags, wide.data(),
                                static_cast<int>(wide.size()), nullptr, 0, nullptr, nullptr, 0);
    if (n <= 0) return;
    std::vector<char> bytes(static_cast<std::size_t>(n));
    // With LCMAP_SORTKEY the output is bytes, passed through the wide-character parameter.
    LCMapStringEx(LOCALE_NAME_INVARIANT, flags, wide.data(), static_cast<int>(wide.size()),
                  reinterpret_cast<LPWSTR>(bytes.data()), n, nullptr, nullptr, 0);
    key.append(bytes.data(), bytes.size() - 1);  // without the terminating zero byte
}

}  // namespace quiller::sync::platform
#endif
