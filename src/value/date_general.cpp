// The "General Date" form (en-US): M/d/yyyy h:mm:ss AM/PM, the year unpadded.
#include <charconv>

#include "value/value.hpp"

namespace quiller::value {
namespace {

char* put_number(char* p, int v, int min_digits = 1) {
    if (min_digits == 2 && v < 10) *p++ = '0';
    return std::to_chars(p, p + 12, v).ptr;
}

char* put_date(char* p, const DateParts& d) {
    p = put_number(p, d.month);
    *p++ = '/';
    p = put_number(p, d.day);
    *p++ = '/';
    return put_number(p, d.year);
}

char* put_time(char* p, const DateParts& d) {
    int h12 = d.hour % 12 == 0 ? 12 : d.hour % 12;
    p = put_number(p, h12);
    *p++ = ':';
    p = put_number(p, d.minute, 2);
    *p++ = ':';
    p = put_number(p, d.second, 2);
    *p++ = ' ';
    *p++ = d.hour < 12 ? 'A' : 'P';
    *p++ = 'M';
    return p;
}

}  // namespace

std::string format_general_date(double serial) {
    DateParts d = split_date(serial);
    bool has_date = !(d.year == 1899 && d.month == 12 && d.day == 30);
    bool has_time = d.hour || d.minute || d.second;

    char buf[64];
    char* p = buf;
    if (has_date) p = put_date(p, d);
    if (has_date && has_time) *p++ = ' ';
    if (has_time || !has_date) p = put_time(p, d);
    return std::string(buf, p);
}

}  // namespace quiller::value
