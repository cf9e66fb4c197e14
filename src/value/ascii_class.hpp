// Locale-free character classes for the value layer's scanners. Only ASCII counts: the platform's
// conversions know no other digits, letters or blanks that a script would write.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quiller::value::detail {

constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool is_alpha(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Blanks as the conversions skip them: space, tab, line feed, vertical tab, form feed, return.
constexpr bool is_blank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// Value of a digit in base 16 (0-9, a-f, A-F); -1 for any other character.
constexpr int hex_digit_value(char c) {
    if (is_digit(c)) return c - '0';
    char l = lower(c);
    return l >= 'a' && l <= 'f' ? l - 'a' + 10 : -1;
}

// A text that is nothing but a whole number of at most 15 digits, with an optional leading "-"
// (no blanks, no other sign): the value every reader agrees on, exactly. Counters and indexes
// of scripts are such texts, so the readers answer them without their full scan.
inline std::optional<double> plain_whole_number(std::string_view s) {
    const bool negative = !s.empty() && s.front() == '-';
    const std::string_view digits = s.substr(negative ? 1 : 0);
    if (digits.empty() || digits.size() > 15) return std::nullopt;
    std::int64_t v = 0;
    for (char c : digits) {
        if (!is_digit(c)) return std::nullopt;
        v = v * 10 + (c - '0');
    }
    return negative ? -static_cast<double>(v) : static_cast<double>(v);  // "-0" reads as -0
}

}  // namespace quiller::value::detail
