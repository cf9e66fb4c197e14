// Rendering of date/time pictures (en-US names; weeks start on Sunday and week 1 holds
// 1 January). "ddddd", "ttttt" and "c" follow the regional conventions.
#include <charconv>

#include "value/format_picture.hpp"
#include "value/value.hpp"

namespace quiller::value::detail {
namespace {

constexpr std::string_view kMonths[] = {"January",   "February", "March",    "April",
                                        "May",       "June",     "July",     "August",
                                        "September", "October",  "November", "December"};
constexpr std::string_view kDays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                      "Thursday", "Friday", "Saturday"};

void put(std::string& out, int v, int min_digits = 1) {
    if (min_digits == 2 && v >= 0 && v < 10) out += '0';
    char buf[16];
    out.append(buf, std::to_chars(buf, buf + sizeof buf, v).ptr);
}

int hour12(int hour) {
    return hour % 12 == 0 ? 12 : hour % 12;
}

int day_of_year(const DateParts& d) {
    return static_cast<int>(date_serial(d.year, d.month, d.day) - date_serial(d.year, 1, 1)) + 1;
}

int week_of_year(const DateParts& d) {
    const int doy = day_of_year(d);
    const int jan1_weekday = ((d.weekday - 1 - (doy - 1)) % 7 + 7) % 7;  // 0 = Sunday
    return (doy - 1 + jan1_weekday) / 7 + 1;
}

void short_date(std::string& out, const DateParts& d) {
    put(out, d.month);
    out += '/';
    put(out, d.day);
    out += '/';
    put(out, d.year);
}

void long_date(std::string& out, const DateParts& d) {
    out.append(kDays[d.weekday - 1]).append(", ").append(kMonths[d.month - 1]) += ' ';
    put(out, d.day);
    out += ", ";
    put(out, d.year);
}

void long_time(std::string& out, const DateParts& d) {
    put(out, hour12(d.hour));
    out += ':';
    put(out, d.minute, 2);
    out += ':';
    put(out, d.second, 2);
    out += d.hour < 12 ? " AM" : " PM";
}

void write_date_item(std::string& out, const Token& t, const DateParts& d) {
    switch (t.kind) {
        case Tok::Day:
            return put(out, d.day);
        case Tok::Day2:
            return put(out, d.day, 2);
        case Tok::DayAbbr:
            out += kDays[d.weekday - 1].substr(0, 3);
            return;
        case Tok::DayName:
            out += kDays[d.weekday - 1];
            return;
        case Tok::ShortDate:
            return short_date(out, d);
        case Tok::LongDate:
            return long_date(out, d);
        case Tok::Weekday:
            return put(out, d.weekday);
        case Tok::Week:
            return put(out, week_of_year(d));
        case Tok::Month:
            return put(out, d.month);
        case Tok::Month2:
            return put(out, d.month, 2);
        case Tok::MonthAbbr:
            out += kMonths[d.month - 1].substr(0, 3);
            return;
        case Tok::MonthName:
            out += kMonths[d.month - 1];
            return;
        case Tok::Quarter:
            return put(out, (d.month - 1) / 3 + 1);
        case Tok::DayOfYear:
            return put(out, day_of_year(d));
        case Tok::Year2:
            return put(out, d.year % 100, 2);
        case Tok::Year4:
            return put(out, d.year);
        default:
            return;
    }
}

void write_time_item(std::string& out, const Picture& p, const Token& t, const DateParts& d) {
    const int hour = p.twelve_hour ? hour12(d.hour) : d.hour;
    switch (t.kind) {
        case Tok::Hour:
            return put(out, hour);
        case Tok::Hour2:
            return put(out, hour, 2);
        case Tok::Minute:
            return put(out, d.minute);
        case Tok::Minute2:
            return put(out, d.minute, 2);
        case Tok::Second:
            return put(out, d.second);
        case Tok::Second2:
            return put(out, d.second, 2);
        case Tok::LongTime:
            return long_time(out, d);
        case Tok::AmPm:
            out += d.hour < 12 ? std::string_view(p.pool).substr(t.off, t.len)
                               : std::string_view(p.pool).substr(t.off + t.len, t.n);
            return;
        default:
            return write_date_item(out, t, d);
    }
}

// "ddddd" and "ttttt" with regional pictures other than en-US's; false for any other token.
bool write_regional(std::string& out, const Token& t, double serial) {
    const Picture* regional = t.kind == Tok::ShortDate  ? regional_short_date()
                              : t.kind == Tok::LongTime ? regional_long_time()
                                                        : nullptr;
    if (!regional) return false;
    render_date(*regional, serial, out);
    return true;
}

}  // namespace

void render_date(const Picture& p, double serial, std::string& out) {
    const DateParts d = split_date(serial);
    for (const Token& t : p.tokens) {
        if (t.kind == Tok::Literal) {
            out += p.text(t);
        } else if (t.kind == Tok::GeneralDate) {
            out += general_date(serial);
        } else if (!write_regional(out, t, serial)) {
            write_time_item(out, p, t, d);
        }
    }
}

}  // namespace quiller::value::detail
