// The general number form: 15 significant digits, correctly rounded; the exponent form for
// magnitudes from 1E+15 up and below 1E-04, as "%.15G" writes it.
#include <charconv>
#include <cmath>

#include "value/value.hpp"

namespace quiller::value {

namespace {

// A whole number below 1E+15 in magnitude, digit by digit; no negative zero is written.
std::string whole_number_text(long long n) {
    char buf[24];
    char* p = buf + sizeof buf;
    unsigned long long u =
        n < 0 ? 0ull - static_cast<unsigned long long>(n) : static_cast<unsigned long long>(n);
    do {
        *--p = static_cast<char>('0' + u % 10);
        u /= 10;
    } while (u != 0);
    if (n < 0) *--p = '-';
    return std::string(p, buf + sizeof buf);
}

}  // namespace

std::string format_general_number(double v) {
    // Whole numbers, the common case (NaN and the infinities fail the first test).
    if (v > -1e15 && v < 1e15 && static_cast<double>(static_cast<long long>(v)) == v)
        return whole_number_text(static_cast<long long>(v));
    if (std::isnan(v)) return "NaN";
    if (std::isinf(v)) return v < 0 ? "-Infinity" : "Infinity";

    char buf[32];
    char* end = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, 15).ptr;
    for (char* p = buf; p != end; ++p) {
        if (*p == 'e') *p = 'E';
    }
    return std::string(buf, end);
}

}  // namespace quiller::value
