// The user's own regional settings for numbers, as Windows keeps them.
#pragma once

#include <string>

namespace quiller::win32 {

struct NumberSeparators {
    std::string decimal = ".";    // LOCALE_SDECIMAL
    std::string thousands = ",";  // LOCALE_STHOUSAND
};

// The separators of the user's default locale, as UTF-8; en-US's where the system has none.
NumberSeparators user_number_separators();

}  // namespace quiller::win32
