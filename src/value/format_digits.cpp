// Decimal digits of a double for the formatter: 15 significant digits, so that numbers such as
// 0.015 or 2.675 round as written rather than by their binary neighbours.
#include <charconv>
#include <cmath>
#include <cstdint>

#include "value/format_picture.hpp"

namespace quiller::value::detail {
namespace {

constexpr int kSignificant = 15;

void drop_trailing_zeros(DecimalForm& d) {
    while (d.count > 0 && d.digits[d.count - 1] == '0') --d.count;
}

// Whole numbers below 10^15: their digits directly.
DecimalForm whole_form(std::uint64_t n) {
    DecimalForm d;
    d.count =
        static_cast<int>(std::to_chars(d.digits, d.digits + sizeof d.digits, n).ptr - d.digits);
    d.point = d.count;
    drop_trailing_zeros(d);
    return d;
}

// The usual magnitudes without text conversion: |v| times a power of ten is brought into
// [1e14, 1e15), where the nearest whole number is the 15-digit mantissa. The product is off by
// at most 1/16, so the answer is only trusted away from halves and the ends of the range.
bool scaled_form(double v, DecimalForm& d) {
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    if (!(v >= 1e-7 && v < 1e15)) return false;
    int p = 14 - static_cast<int>(std::floor(std::ilogb(v) * 0.30102999566398120));
    double m = v * kPowers[p];
    if (m < 1e14 && p < 22) m = v * kPowers[++p];
    if (m >= 1e15 && p > 0) m = v * kPowers[--p];
    const double whole = std::floor(m);
    const double fraction = m - whole;
    if (m < 1e14 + 1 || m > 1e15 - 2 || std::fabs(fraction - 0.5) < 0.125) return false;
    const auto mantissa = static_cast<std::uint64_t>(whole) + (fraction > 0.5);
    d.count = static_cast<int>(std::to_chars(d.digits, d.digits + sizeof d.digits, mantissa).ptr -
                               d.digits);
    d.point = kSignificant - p;
    drop_trailing_zeros(d);
    return true;
}

// Reads "d.ddde+XX" as written by std::to_chars in scientific form.
DecimalForm read_scientific(const char* p, const char* end) {
    DecimalForm d;
    for (; p != end && *p != 'e'; ++p)
        if (*p != '.') d.digits[d.count++] = *p;
    int exponent = 0;
    if (p != end) std::from_chars(p + (p[1] == '+' ? 2 : 1), end, exponent);
    d.point = exponent + 1;
    drop_trailing_zeros(d);
    return d;
}

}  // namespace

DecimalForm decimal_form(double v) {
    v = std::fabs(v);
    if (v == 0) return {};
    if (v < 1e15 && v == std::trunc(v)) return whole_form(static_cast<std::uint64_t>(v));
    DecimalForm d;
    if (scaled_form(v, d)) return d;
    char buf[40];
    char* end =
        std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific, kSignificant - 1)
            .ptr;
    return read_scientific(buf, end);
}

void round_digits(DecimalForm& d, int keep) {
    if (keep >= d.count) return;
    const bool up = keep >= 0 && d.digits[keep] >= '5';
    d.count = keep > 0 ? keep : 0;
    if (up) {
        while (d.count > 0 && d.digits[d.count - 1] == '9') --d.count;
        if (d.count == 0) {
            d.digits[0] = '1';
            d.count = 1;
            ++d.point;
            return;
        }
        ++d.digits[d.count - 1];
    }
    drop_trailing_zeros(d);
}

}  // namespace quiller::value::detail
