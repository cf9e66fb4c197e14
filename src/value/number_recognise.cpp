// The locale-aware number test: what the platform's text-to-number conversion accepts with the
// regional conventions in force (decimal and thousands separators, currency symbol), and the
// value it gives.
#include <cstdint>
#include <cstring>

#include "value/ascii_class.hpp"
#include "value/decimal_digits.hpp"
#include "value/value.hpp"

namespace quiller::value {
namespace {

using detail::DecimalDigits;
using detail::is_blank;
using detail::is_digit;

// Signs, currency sign and parentheses seen around the digits.
struct Affixes {
    bool plus = false;
    bool minus = false;
    bool currency = false;
    bool open_paren = false;
    bool close_paren = false;
};

// The length of `sep` when the text at `p` starts with it, else 0. An empty separator never
// matches.
std::size_t separator_at(const char* p, const char* end, std::string_view sep) {
    if (sep.empty() || *p != sep.front() || static_cast<std::size_t>(end - p) < sep.size())
        return 0;
    return std::memcmp(p, sep.data(), sep.size()) == 0 ? sep.size() : 0;
}

// The flag a sign or parenthesis sets; nullptr for any other character. "(" may only open the
// number and ")" only close it.
bool* affix_flag(char c, Affixes& a, bool after_digits) {
    switch (c) {
        case '+':
            return &a.plus;
        case '-':
            return &a.minus;
        case '(':
            return after_digits ? nullptr : &a.open_paren;
        case ')':
            return after_digits && a.open_paren ? &a.close_paren : nullptr;
        default:
            return nullptr;
    }
}

// Blanks and, before or after the digits, at most one each of "+", "-", the currency symbol and
// the parentheses, in any order.
const char* scan_affixes(const char* p, const char* end, Affixes& a, bool after_digits,
                         std::string_view currency) {
    while (p != end) {
        if (is_blank(*p)) {
            ++p;
            continue;
        }
        if (const std::size_t n = separator_at(p, end, currency)) {
            if (a.currency) break;
            a.currency = true;
            p += n;
            continue;
        }
        bool* seen = affix_flag(*p, a, after_digits);
        if (!seen || *seen) break;
        *seen = true;
        ++p;
    }
    return p;
}

// The exponent after "e": an optional sign and at least one digit; nullptr when malformed.
const char* scan_exponent(const char* p, const char* end, DecimalDigits& d) {
    if (p != end && (*p == '+' || *p == '-')) {
        if (*p == '-') d.set_exponent_negative();
        ++p;
    }
    if (p == end || !is_digit(*p)) return nullptr;
    for (; p != end && is_digit(*p); ++p) d.add_exponent_digit(*p);
    return p;
}

// Digits with thousands separators anywhere after the first digit, one decimal separator and an
// exponent. nullptr when there is no digit or the exponent is malformed.
const char* scan_decimal(const char* p, const char* end, DecimalDigits& d,
                         const NumberConventions& c) {
    while (p != end) {
        if (is_digit(*p)) {
            d.add_digit(*p++);
        } else if (const std::size_t n = d.in_fraction() ? 0 : separator_at(p, end, c.decimal)) {
            d.start_fraction();
            p += n;
        } else if (const std::size_t g = d.has_digits() ? separator_at(p, end, c.thousands) : 0) {
            p += g;
        } else {
            break;
        }
    }
    if (!d.has_digits()) return nullptr;
    if (p != end && (*p == 'e' || *p == 'E')) return scan_exponent(p + 1, end, d);
    return p;
}

// "&H" (hex) or "&O" (octal) digits; the value must fit a signed 32-bit integer.
const char* scan_radix(const char* p, const char* end, int radix, double& out) {
    std::uint64_t v = 0;
    const char* start = p;
    for (; p != end; ++p) {
        int digit = detail::hex_digit_value(*p);
        if (digit < 0 || digit >= radix) break;
        if (v <= INT32_MAX) v = v * radix + digit;
    }
    if (p == start || v > INT32_MAX) return nullptr;
    out = static_cast<double>(v);
    return p;
}

int radix_of_prefix(const char* p, const char* end) {
    if (end - p < 2 || p[0] != '&') return 0;
    char c = detail::lower(p[1]);
    return c == 'h' ? 16 : c == 'o' ? 8 : 0;
}

}  // namespace

namespace {

// The syntax of a number with its affixes; the digits are left in `digits` (or the value in `v`
// for "&H"/"&O" numbers, then `radix` is set).
bool scan_number(std::string_view s, DecimalDigits& digits, Affixes& affixes, int& radix,
                 double& v) {
    const NumberConventions& c = conventions();
    const char* end = s.data() + s.size();
    const char* p = scan_affixes(s.data(), end, affixes, false, c.currency);
    radix = radix_of_prefix(p, end);
    p = radix ? scan_radix(p + 2, end, radix, v) : scan_decimal(p, end, digits, c);
    if (!p) return false;
    p = scan_affixes(p, end, affixes, true, c.currency);
    return p == end && affixes.open_paren == affixes.close_paren;
}

}  // namespace

// The whole text is checked before the digits are converted: most texts that are not numbers
// fail on a later character, and then no conversion is paid for.
std::optional<double> parse_locale_number(std::string_view s) {
    if (const auto whole = detail::plain_whole_number(s)) return *whole;
    DecimalDigits digits;
    Affixes affixes;
    int radix = 0;
    double v = 0;
    if (!scan_number(s, digits, affixes, radix, v)) return std::nullopt;
    if (!radix) {
        std::optional<double> value = digits.value();
        if (!value) return std::nullopt;
        v = *value;
    }
    bool negative = affixes.minus || affixes.close_paren;
    return negative ? -v : v;
}

bool is_numeric(std::string_view s) {
    if (detail::plain_whole_number(s)) return true;
    DecimalDigits digits;
    Affixes affixes;
    int radix = 0;
    double v = 0;
    if (!scan_number(s, digits, affixes, radix, v)) return false;
    return radix || digits.certainly_finite() || digits.value().has_value();
}

}  // namespace quiller::value
