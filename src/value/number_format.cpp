// The general number form: 15 significant digits, correctly rounded; the exponent form for
// magnitudes from 1E+15 up and below 1E-04, as "%.15G" writes it.
#include <charconv>
#include <cmath>

#include "value/value.hpp"

namespace quiller::value {

std::string format_general_number(double v) {
    if (std::isnan(v)) return "NaN";
    if (std::isinf(v)) return v < 0 ? "-Infinity" : "Infinity";
    if (v == 0) return "0";  // also for -0: no negative zero is written

    char buf[32];
    if (std::abs(v) < 1e15 && v == std::trunc(v)) {  // whole numbers: the common, fast case
        char* end = std::to_chars(buf, buf + sizeof buf, static_cast<long long>(v)).ptr;
        return std::string(buf, end);
    }
    char* end = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, 15).ptr;
    for (char* p = buf; p != end; ++p) {
        if (*p == 'e') *p = 'E';
    }
    return std::string(buf, end);
}

}  // namespace quiller::value
