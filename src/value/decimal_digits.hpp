// Collects a decimal number while it is scanned and converts it with correct rounding, without
// allocating and without the C locale.
#pragma once

#include <optional>

namespace quiller::value::detail {

class DecimalDigits {
  public:
    // A mantissa digit ('0'..'9'), before or after the decimal point.
    void add_digit(char c) {
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
    // True when the value is certainly within a double's range, so the number test needs no
    // conversion.
    bool certainly_finite() const {
        return !sticky_ && exponent_ < 100 && count_ + scale_ + exponent_ < 300;
    }
    // The decimal point: the following digits are the fraction.
    void start_fraction() { in_fraction_ = true; }
    bool in_fraction() const { return in_fraction_; }
    // True once a mantissa digit (a zero included) has been seen.
    bool has_digits() const { return seen_digit_; }

    // The written exponent ("e" part), digit by digit; it saturates far beyond a double's range.
    void add_exponent_digit(char c);
    void set_exponent_negative() { exponent_negative_ = true; }

    // The value, correctly rounded; nothing when it is too large for a double. Values too small
    // for a double give zero.
    std::optional<double> value();

  private:
    std::optional<double> fast_value() const;

    // 767 significant digits decide the rounding of any double; the rest only matter as to
    // whether any of them is non-zero (kept as one sticky digit).
    static constexpr int kMaxDigits = 800;
    static constexpr long kExponentLimit = 1'000'000;

    char text_[kMaxDigits + 32];  // kept digits, then room for the sticky digit and exponent
    int count_ = 0;               // digits kept in text_, without leading zeros
    long scale_ = 0;              // power of ten that applies to the kept digits
    long exponent_ = 0;
    bool exponent_negative_ = false;
    bool sticky_ = false;
    bool in_fraction_ = false;
    bool seen_digit_ = false;
};

}  // namespace quiller::value::detail
