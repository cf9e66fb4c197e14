// Pictures made from the platform's locale data: the currency format from its symbol and
// orders, the short date and the time format from their patterns.
#include <string>

#include "value/format.hpp"

namespace quiller::value {
namespace {

// `text` as literal picture text: quoted, or escaped byte by byte when it holds a quote.
std::string literal(std::string_view text) {
    std::string out;
    if (text.find('"') == std::string_view::npos) {
        out.append(1, '"').append(text).append(1, '"');
        return out;
    }
    for (const char c : text) out.append(1, '\\').append(1, c);
    return out;
}

std::string placed(std::string_view layout, const std::string& symbol, const std::string& number) {
    std::string out;
    for (const char c : layout) {
        if (c == 'S') {
            out += symbol;
        } else if (c == 'N') {
            out += number;
        } else {
            out += c;
        }
    }
    return out;
}

// The run of `c` starting at `i` in `s`.
std::size_t run_of(std::string_view s, std::size_t i) {
    std::size_t end = i;
    while (end < s.size() && s[end] == s[i]) ++end;
    return end - i;
}

// The picture for a run of one pattern letter; nullptr for letters that write nothing (eras).
const char* picture_run(char letter, std::size_t n) {
    switch (letter) {
        case 'd':
            return n == 1 ? "d" : n == 2 ? "dd" : n == 3 ? "ddd" : "dddd";
        case 'M':
            return n == 1 ? "m" : n == 2 ? "mm" : n == 3 ? "mmm" : "mmmm";
        case 'y':
            return n <= 2 ? "yy" : "yyyy";
        case 'h':
        case 'H':
            return n == 1 ? "h" : "hh";
        case 'm':
            return n == 1 ? "n" : "nn";
        case 's':
            return n == 1 ? "s" : "ss";
        case 't':
            return "AMPM";
        default:
            return nullptr;  // 'g': the era
    }
}

bool is_pattern_letter(char c) {
    return std::string_view("dMyhHmstg").find(c) != std::string_view::npos;
}

// Characters a picture takes as they are; any other one is escaped.
bool is_plain(char c) {
    return std::string_view(" /:.,-").find(c) != std::string_view::npos;
}

// The text quoted from `i` on ("''" is a quote, inside or outside quotes) as literal text;
// returns the index after the closing quote.
std::size_t quoted(std::string_view pattern, std::size_t i, std::string& out) {
    std::string text;
    if (i < pattern.size() && pattern[i] == '\'') {  // "''": a quote
        out += "\\'";
        return i + 1;
    }
    while (i < pattern.size()) {
        if (pattern[i] != '\'') {
            text += pattern[i++];
        } else if (i + 1 < pattern.size() && pattern[i + 1] == '\'') {
            text += '\'';
            i += 2;
        } else {
            ++i;
            break;
        }
    }
    out += literal(text);
    return i;
}

}  // namespace

std::string currency_picture(std::string_view symbol, int positive, int negative, int digits) {
    static constexpr std::string_view kPositive[] = {"SN", "NS", "S N", "N S"};
    static constexpr std::string_view kNegative[] = {
        "(SN)", "-SN",  "S-N",  "SN-",  "(NS)", "-NS",  "N-S",   "NS-",
        "-N S", "-S N", "N S-", "S N-", "S -N", "N- S", "(S N)", "(N S)"};
    std::string number = "#,##0";
    if (digits > 0)
        number.append(1, '.').append(static_cast<std::size_t>(digits < 9 ? digits : 9), '0');
    const std::string s = literal(symbol);
    const std::string_view plus = kPositive[positive >= 0 && positive < 4 ? positive : 0];
    const std::string_view minus = kNegative[negative >= 0 && negative < 16 ? negative : 0];
    return placed(plus, s, number) + ";" + placed(minus, s, number);
}

std::string picture_of_locale_pattern(std::string_view pattern) {
    std::string out;
    for (std::size_t i = 0; i < pattern.size();) {
        const char c = pattern[i];
        if (c == '\'') {
            i = quoted(pattern, i + 1, out);
        } else if (is_pattern_letter(c)) {
            const std::size_t n = run_of(pattern, i);
            if (const char* run = picture_run(c, n)) out += run;
            i += n;
        } else {
            if (!is_plain(c)) out += '\\';
            out += c;
            ++i;
        }
    }
    return out;
}

}  // namespace quiller::value
