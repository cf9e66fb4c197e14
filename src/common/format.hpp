// The formatter: numbers and dates written with a named format ("Short Date", "Long Time",
// "General Date", "Long Date", "Medium Date", "Short Time", "Medium Time", "General Number",
// "Fixed", "Standard", "Percent", "Currency", "Yes/No", "True/False", "On/Off") or a picture
// (d dd ddd dddd m mm mmm mmmm yy yyyy h hh n nn s ss AM/PM am/pm A/P; 0 # . , % E+ E- for
// numbers; "literal" text, \\x escapes and ; sections), with the regional conventions of the
// platform (en-US on POSIX).
#pragma once

#include <string>
#include <string_view>

namespace quiller::value {

// A number with a named format or a number picture. An empty format gives the general form.
std::string format_number(double v, std::string_view format);

// A day number (days since 30 December 1899) with a named format or a date/time picture. An
// empty format gives "General Date".
std::string format_date(double serial, std::string_view format);

}  // namespace quiller::value
