// Day numbers: days since 30 December 1899 in the proleptic Gregorian calendar, the fraction
// being the time of day. Before that day the number is negative and its fraction still counts
// forward from midnight (-1.25 is 29 December 1899, 6:00).
#include <cmath>

#include "value/value.hpp"

namespace quiller::value {
namespace {

constexpr long kUnixEpochDay = 25569;  // day number of 1 January 1970
constexpr double kMaxDays = 1e9;       // keeps out-of-range serials away from overflow

// Days since 1 January 1970 of the 1st of a month (month 1..12).
long days_from_civil(long y, unsigned m) {
    y -= m <= 2;
    const long era = (y >= 0 ? y : y - 399) / 400;
    const auto yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<long>(doe) - 719468;
}

struct Civil {
    long year;
    unsigned month, day;
};

Civil civil_from_days(long z) {
    z += 719468;
    const long era = (z >= 0 ? z : z - 146096) / 146097;
    const auto doe = static_cast<unsigned>(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    const unsigned d = doy - (153 * mp + 2) / 5 + 1;
    const unsigned m = mp < 10 ? mp + 3 : mp - 9;
    return {static_cast<long>(yoe) + era * 400 + (m <= 2), m, d};
}

}  // namespace

double date_serial(int year, int month, int day) {
    long y = year + (month > 0 ? (month - 1) / 12 : (month - 12) / 12);
    long m = month - (y - year) * 12;
    return static_cast<double>(days_from_civil(y, static_cast<unsigned>(m)) + kUnixEpochDay +
                               (day - 1));
}

double time_serial(int hour, int minute, int second) {
    return (hour * 3600.0 + minute * 60.0 + second) / 86400.0;
}

DateParts split_date(double serial) {
    if (std::isnan(serial)) serial = 0;
    serial = std::fmax(-kMaxDays, std::fmin(kMaxDays, serial));
    double whole = std::trunc(serial);
    auto day = static_cast<long>(whole);
    long seconds = std::lround(std::fabs(serial - whole) * 86400.0);
    if (seconds >= 86400) {  // rounds up to the next midnight
        ++day;
        seconds -= 86400;
    }
    Civil c = civil_from_days(day - kUnixEpochDay);
    long weekday = ((day + 6) % 7 + 7) % 7 + 1;  // day 0 was a Saturday
    return {static_cast<int>(c.year),
            static_cast<int>(c.month),
            static_cast<int>(c.day),
            static_cast<int>(seconds / 3600),
            static_cast<int>(seconds / 60 % 60),
            static_cast<int>(seconds % 60),
            static_cast<int>(weekday)};
}

}  // namespace quiller::value
