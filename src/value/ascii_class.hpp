// Locale-free character classes for the value layer's scanners. Only ASCII counts: the platform's
// conversions know no other digits, letters or blanks that a script would write.
#pragma once

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

}  // namespace quiller::value::detail
