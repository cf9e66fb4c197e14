// The leading-characters number reader: the number at the start of a text, "." as decimal point
// whatever the locale; 0 when the text doesn't start with one.
#include <cmath>
#include <cstdint>

#include "value/ascii_class.hpp"
#include "value/decimal_digits.hpp"
#include "value/value.hpp"

namespace quiller::value {
namespace {

using detail::is_digit;

// "e" or "E", an optional sign and at least one digit; anything less is not read.
const char* read_exponent(const char* p, const char* end, detail::DecimalDigits& d) {
    const char* q = p + 1;
    bool negative = q != end && *q == '-';
    if (q != end && (*q == '+' || *q == '-')) ++q;
    if (q == end || !is_digit(*q)) return p;
    if (negative) d.set_exponent_negative();
    for (; q != end && is_digit(*q); ++q) d.add_exponent_digit(*q);
    return q;
}

// Digits with at most one "." and an optional exponent. Too large a value gives infinity.
double read_decimal(const char* p, const char* end) {
    detail::DecimalDigits d;
    for (; p != end; ++p) {
        if (is_digit(*p)) {
            d.add_digit(*p);
        } else if (*p == '.' && !d.in_fraction()) {
            d.start_fraction();
        } else {
            break;
        }
    }
    if (!d.has_digits()) return 0;
    if (p != end && (*p == 'e' || *p == 'E')) read_exponent(p, end, d);
    return d.value().value_or(HUGE_VAL);
}

// Hex or octal digits after "&H" / "&O", read as an unsigned number.
double read_radix(const char* p, const char* end, int radix) {
    double v = 0;
    for (; p != end; ++p) {
        int digit = detail::hex_digit_value(*p);
        if (digit < 0 || digit >= radix) break;
        v = v * radix + digit;  // exact up to 2^53, which 13 hex digits reach
    }
    return v;
}

}  // namespace

double read_leading_number(std::string_view s) {
    if (const auto whole = detail::plain_whole_number(s)) return *whole;
    const char* p = s.data();
    const char* end = p + s.size();
    while (p != end && detail::is_blank(*p)) ++p;
    bool negative = false;
    if (p != end && (*p == '+' || *p == '-')) negative = *p++ == '-';

    double v;
    if (end - p >= 2 && p[0] == '&' && (detail::lower(p[1]) == 'h' || detail::lower(p[1]) == 'o')) {
        v = read_radix(p + 2, end, detail::lower(p[1]) == 'h' ? 16 : 8);
    } else {
        v = read_decimal(p, end);
    }
    return negative ? -v : v;
}

}  // namespace quiller::value
