// The value layer: how script text is read as numbers and dates, and how numbers and dates are
// written back as text. Shared by conditions, `set` expressions and the formatter.
//
// Dates are held as in the Windows platform: a double counting days since 30 December 1899, the
// fraction being the time of day. Regional conventions are en-US on POSIX (M/d/yyyy, h:mm:ss AM/PM,
// "." decimal point, "," thousands separator).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quiller::value {

// The locale-aware number test: blanks around the number, a leading or trailing sign, the
// decimal point, thousands separators, currency sign, parentheses for negatives and exponents are
// accepted, as the platform's text-to-number conversion does. Returns the value when `s` is a
// number, nothing otherwise.
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
