// The user's regional settings from GetLocaleInfoEx, and the value layer's conventions made
// from them.
#include "os/win32/win32_regional.hpp"

#include "os/win32/win32_handle.hpp"
#include "os/win32/win32_platform.hpp"
#include "value/format.hpp"
#include "value/value.hpp"

namespace quiller::win32 {
namespace {

// One locale text of the user's default locale; `fallback` when there is none. A text may be
// empty (a user can clear the thousands separator), so only a failed call falls back.
std::string user_locale_text(LCTYPE type, std::string_view fallback) {
    wchar_t buffer[128];  // the longest, LOCALE_SSHORTDATE, holds at most 80 characters
    const int n = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, buffer, 128);
    if (n <= 0) return std::string(fallback);
    return narrow(std::wstring_view(buffer, static_cast<std::size_t>(n - 1)));
}

// One locale number of the user's default locale; `fallback` when there is none.
int user_locale_number(LCTYPE type, int fallback) {
    DWORD value = 0;
    const int n = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type | LOCALE_RETURN_NUMBER,
                                  reinterpret_cast<LPWSTR>(&value), sizeof value / sizeof(wchar_t));
    return n > 0 ? static_cast<int>(value) : fallback;
}

// A locale pattern as a picture; `fallback` (a picture) when the system has none.
std::string user_picture(LCTYPE type, std::string_view fallback) {
    const std::string pattern = user_locale_text(type, {});
    return pattern.empty() ? std::string(fallback) : value::picture_of_locale_pattern(pattern);
}

}  // namespace

NumberSeparators user_number_separators() {
    return {user_locale_text(LOCALE_SDECIMAL, "."), user_locale_text(LOCALE_STHOUSAND, ",")};
}

RegionalSettings user_regional_settings() {
    const value::NumberConventions en_us;
    const NumberSeparators separators = user_number_separators();
    const std::string currency = user_locale_text(LOCALE_SCURRENCY, en_us.currency);
    const std::string currency_format = value::currency_picture(
        currency, user_locale_number(LOCALE_ICURRENCY, 0), user_locale_number(LOCALE_INEGCURR, 0),
        user_locale_number(LOCALE_ICURRDIGITS, 2));
    const std::string short_date = user_picture(LOCALE_SSHORTDATE, en_us.short_date);
    const std::string long_time = user_picture(LOCALE_STIMEFORMAT, en_us.long_time);
    const std::string am = user_locale_text(LOCALE_S1159, en_us.am);
    const std::string pm = user_locale_text(LOCALE_S2359, en_us.pm);
    return RegionalSettings({separators.decimal, separators.thousands, currency, currency_format,
                             short_date, long_time, am, pm});
}

}  // namespace quiller::win32
