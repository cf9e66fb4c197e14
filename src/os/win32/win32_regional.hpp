// The user's own regional settings, as Windows keeps them.
#pragma once

#include <string>

#include "os/platform.hpp"

namespace quiller::win32 {

struct NumberSeparators {
    std::string decimal = ".";    // LOCALE_SDECIMAL
    std::string thousands = ",";  // LOCALE_STHOUSAND
};

// The separators of the user's default locale, as UTF-8; en-US's where the system has none.
NumberSeparators user_number_separators();

// The regional conventions of the user's default locale: separators, currency symbol and format
// (LOCALE_SCURRENCY, LOCALE_ICURRENCY, LOCALE_INEGCURR, LOCALE_ICURRDIGITS), short date
// (LOCALE_SSHORTDATE), time format (LOCALE_STIMEFORMAT) and AM/PM texts (LOCALE_S1159,
// LOCALE_S2359). What the system can't give stays en-US's.
RegionalSettings user_regional_settings();

}  // namespace quiller::win32
