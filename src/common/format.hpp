// The formatter: numbers and dates written with a named format ("Short Date", "Long Time",
// "General Date", "Long Date", "Medium Date", "Short Time", "Medium Time", "General Number",
// "Fixed", "Standard", "Percent", "Currency", "Scientific", "Yes/No", "True/False", "On/Off";
// names ignore case) or a picture (d dd ddd dddd ddddd dddddd w ww m mm mmm mmmm q y yy yyyy h hh
// n nn s ss ttttt c AM/PM am/pm A/P a/p AMPM for dates and times; 0 # . , % E+ E- e+ e- for
// numbers, with up to three ";" sections: positive, negative, zero; "literal" text, \x escapes),
// with the regional conventions of the platform (en-US on POSIX).
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

}  // namespace quiller::value
