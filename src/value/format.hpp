// The formatter: numbers and dates written with a named format ("Short Date", "Long Time",
// "General Date", "Long Date", "Medium Date", "Short Time", "Medium Time", "General Number",
// "Fixed", "Standard", "Percent", "Currency", "Scientific", "Yes/No", "True/False", "On/Off";
// names ignore case) or a picture (d dd ddd dddd ddddd dddddd w ww m mm mmm mmmm q y yy yyyy h hh
// n nn s ss ttttt c AM/PM am/pm A/P a/p AMPM for dates and times; 0 # . , % E+ E- e+ e- for
// numbers, with up to three ";" sections: positive, negative, zero; "literal" text, \x escapes),
// with the regional conventions in force (value::conventions(); en-US on POSIX): "." and ","
// write the decimal and thousands separators, "Currency", "Short Date", "Long Time", "General
// Date", "ddddd", "ttttt", "c" and "AMPM" the conventions' pictures and texts, "General Number"
// the decimal separator. Day and month names, "Long Date", "Medium Date", "Medium Time", "Short
// Time", "/" and ":" stay en-US's.
//
// Either function takes either kind of format: a number picture writes a day number as a
// number, a date picture reads a number as a day number. They differ only for the empty format.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quiller::value {

// A number with a named format or a number picture. An empty format gives the general form.
std::string format_number(double v, std::string_view format);

// A day number (days since 30 December 1899) with a named format or a date/time picture. An
// empty format gives "General Date".
std::string format_date(double serial, std::string_view format);

// The local date and time of a moment given in seconds since 1970-01-01 UTC, as a day number.
double local_day_number(std::int64_t unix_seconds);

// --- Pictures from the platform's locale data (for NumberConventions) ------------------------

// The picture of "Currency": the symbol (as literal text) and "#,##0" with `digits` decimals in
// the platform's positive order (0 "$1.1", 1 "1.1$", 2 "$ 1.1", 3 "1.1 $") and negative order
// (0 "($1.1)", 1 "-$1.1", 2 "$-1.1", ... 15 "(1.1 $)", as LOCALE_INEGCURR numbers them).
std::string currency_picture(std::string_view symbol, int positive, int negative, int digits);

// A date or time pattern of the platform's locale data ("dd.MM.yyyy", "h:mm:ss tt", "HH:mm")
// as a picture ("dd.mm.yyyy", "h:nn:ss AMPM", "hh:nn"): M is the month, m the minutes, H and h
// the hours, t and tt the regional AM/PM texts, 'quoted' text literal, eras dropped.
std::string picture_of_locale_pattern(std::string_view pattern);

}  // namespace quiller::value
