// Exact conversion of scanned decimal digits to a double.
#include "value/decimal_digits.hpp"

#include <charconv>
#include <cstdint>
#include <system_error>

namespace quiller::value::detail {

void DecimalDigits::add_exponent_digit(char c) {
    if (exponent_ < kExponentLimit) exponent_ = exponent_ * 10 + (c - '0');
}

// Up to 15 digits times a power of ten of at most 22 is exact in one rounding step, so the
// common short numbers of scripts skip the text conversion.
std::optional<double> DecimalDigits::fast_value() const {
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    if (sticky_ || count_ > 15) return std::nullopt;
    const long exponent = scale_ + (exponent_negative_ ? -exponent_ : exponent_);
    if (exponent < -22 || exponent > 22) return std::nullopt;
    std::int64_t mantissa = 0;
    for (int i = 0; i < count_; ++i) mantissa = mantissa * 10 + (text_[i] - '0');
    const double m = static_cast<double>(mantissa);
    return exponent >= 0 ? m * kPowers[exponent] : m / kPowers[-exponent];
}

std::optional<double> DecimalDigits::value() {
    if (count_ == 0) return 0.0;
    if (std::optional<double> fast = fast_value()) return fast;
    int n = count_;
    long scale = scale_;
    if (sticky_) {  // a digit beyond the kept ones: rounds like the dropped tail would
        text_[n++] = '1';
        --scale;
    }
    long exponent = scale + (exponent_negative_ ? -exponent_ : exponent_);
    char* end = text_ + sizeof text_;
    text_[n] = 'e';
    char* stop = std::to_chars(text_ + n + 1, end, exponent).ptr;

    double v = 0;
    if (std::from_chars(text_, stop, v).ec == std::errc::result_out_of_range) {
        if (exponent + n <= 0) return 0.0;  // below the smallest double
        return std::nullopt;
    }
    return v;
}

}  // namespace quiller::value::detail
