// The user's decimal and thousands separators from GetLocaleInfoEx.
#include "services/win32/win32_regional.hpp"

#include "services/win32/win32_handle.hpp"
#include "services/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

// One locale text of the user's default locale; `fallback` when there is none. A separator may
// be empty (a user can clear the thousands separator), so only a failed call falls back.
std::string user_locale_text(LCTYPE type, const char* fallback) {
    wchar_t buffer[16];  // LOCALE_SDECIMAL and LOCALE_STHOUSAND hold at most 4 characters
    const int n = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, buffer, 16);
    if (n <= 0) return fallback;
    return narrow(std::wstring_view(buffer, static_cast<std::size_t>(n - 1)));
}

}  // namespace

NumberSeparators user_number_separators() {
    return {user_locale_text(LOCALE_SDECIMAL, "."), user_locale_text(LOCALE_STHOUSAND, ",")};
}

}  // namespace quiller::win32
