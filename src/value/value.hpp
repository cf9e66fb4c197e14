// The value layer: how script text is read as numbers and dates, and how numbers and dates are
// written back as text. Shared by conditions, `set` expressions and the formatter.
//
// Dates are held as in the Windows platform: a double counting days since 30 December 1899, the
// fraction being the time of day. Regional conventions (NumberConventions below) are en-US unless
// the platform sets the user's: Windows does at start-up, POSIX keeps en-US.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quiller::value {

// --- Regional conventions ------------------------------------------------------------------

// What the locale-aware number test and the formatter take from the regional settings. The
// defaults are en-US's, written as the pictures made from en-US's locale data come out (see
// format.hpp). The general forms and the leading-characters reader never use them.
struct NumberConventions {
    std::string_view decimal = ".";    // decimal separator
    std::string_view thousands = ",";  // thousands separator; may be empty
    std::string_view currency = "$";   // currency symbol
    // Pictures of the named formats that follow the regional settings ("Currency", "Short Date",
    // "Long Time"; "General Date" is the short date and the long time), and the texts of "AMPM".
    std::string_view currency_format = "\"$\"#,##0.00;(\"$\"#,##0.00)";
    std::string_view short_date = "m/d/yyyy";
    std::string_view long_time = "h:nn:ss AMPM";
    std::string_view am = "AM";
    std::string_view pm = "PM";
};

// The conventions in force. Reading them takes no lock.
const NumberConventions& conventions();

// Replaces the conventions (their texts are copied). Meant for start-up, before other threads
// use the value layer; tests restore the defaults with set_conventions({}).
void set_conventions(const NumberConventions& c);

// The locale-aware number test: blanks around the number, a leading or trailing sign, the
// decimal separator, thousands separators, the currency symbol (all three of the conventions),
// parentheses for negatives and exponents are accepted, as the platform's text-to-number
// conversion does. Returns the value when `s` is a number, nothing otherwise.
std::optional<double> parse_locale_number(std::string_view s);
bool is_numeric(std::string_view s);

// Reads a number from the leading characters of `s`: leading blanks, an optional sign, digits with
// at most one "." as decimal point, an optional exponent. Reading stops at the first character that
// can't continue a number; 0 when there is none. "&H" / "&O" prefixes read hex / octal.
double read_leading_number(std::string_view s);

// The general number form: up to 15 significant digits, no thousands separators, no trailing
// zeros, "." as decimal point, no leading blank; whole numbers have no decimal part; very large or
// small magnitudes use the exponent form ("1E+20", "1E-05"). Callers report infinities and NaN
// as arithmetic errors before formatting; should one get here it is written "Infinity",
// "-Infinity" or "NaN".
std::string format_general_number(double v);

// A whole number (a count of bytes, a size) in the general number form.
inline std::string format_whole_number(std::int64_t n) {
    return format_general_number(static_cast<double>(n));
}

// --- Dates ---------------------------------------------------------------------------------

// The date/time recogniser: accepts the forms the platform's own string-to-date conversion
// accepts with en-US settings (12/31/2001, 12-31-01, 2001-12-25, Dec 31 2001, 31 December 2001,
// 10:30, 10:30 PM, 1.5, and a date plus a time). Returns the day number, or nothing when `s` is
// not a date. Dates written without a year take the current year (from `current_year`).
// Two-digit years 00-49 are 2000-2049, 50-99 are 1950-1999.
std::optional<double> parse_date(std::string_view s, int current_year);

// Day number of a calendar date (proleptic Gregorian; valid for years 100 to 9999). Months
// outside 1..12 roll over into the neighbouring years and days outside the month into the
// neighbouring months, as the DateSerial function of the platform's languages does.
double date_serial(int year, int month, int day);

// Time of day as a fraction of a day.
double time_serial(int hour, int minute, int second);

struct DateParts {
    int year, month, day, hour, minute, second, weekday;  // weekday: 1 = Sunday .. 7 = Saturday
};
// Calendar parts of a day number (time rounded to the nearest second). Before 30 December 1899
// the integer part gives the day and the fraction, whatever its sign, the time after midnight
// (-1.25 is 29 December 1899, 6:00).
DateParts split_date(double serial);

// The "General Date" form: "M/d/yyyy h:mm:ss AM/PM"; the date part alone when there is no time,
// the time part alone when the date part is 0 (30 December 1899).
std::string format_general_date(double serial);

}  // namespace quiller::value
