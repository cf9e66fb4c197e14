// Exact conversion of scanned decimal digits to a double.
#include "common/decimal_digits.hpp"

#include <charconv>
#include <system_error>

namespace quiller::value::detail {

void DecimalDigits::add_digit(char c) {
    seen_digit_ = true;
    if (count_ == 0 && c == '0') {  // leading zero: only its place counts
        if (in_fraction_) --scale_;
        return;
    }
    if (count_ < kMaxDigits) {
        text_[count_++] = c;
        if (in_fraction_) --scale_;
        return;
    }
    if (c != '0') sticky_ = true;
    if (!in_fraction_) ++scale_;
}

void DecimalDigits::add_exponent_digit(char c) {
    if (exponent_ < kExponentLimit) exponent_ = exponent_ * 10 + (c - '0');
}

std::optional<double> DecimalDigits::value() {
    if (count_ == 0) return 0.0;
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
