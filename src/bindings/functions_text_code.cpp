// Character codes and the character shift: `asc`, `chr`, `encode`, `decode`.
//
// Codes are those of the Windows-1252 code page: 0-127 ASCII, 128-159 its own table ("€" is
// 128), 160-255 Latin-1. Any other character has no code and reads as 63 ("?"), as the code
// page conversion writes it.
#include <array>
#include <string>

#include "value/text.hpp"
#include "value/value.hpp"
#include "bindings/functions_text.hpp"

namespace quiller::text_functions_detail {
namespace {

// The UTF-8 form of each of the 256 codes.
const std::array<std::string, 256>& code_page() {
    static const auto table = [] {
        std::array<std::string, 256> t;
        for (int code = 0; code < 256; ++code)
            t[code] = text::windows1252_to_utf8(std::string(1, static_cast<char>(code)));
        return t;
    }();
    return table;
}

int code_of(std::string_view character) {
    const auto& table = code_page();
    for (int code = 0; code < 256; ++code)
        if (table[code] == character) return code;
    // A byte that is not UTF-8 is a character of its own; it can only be a code page byte.
    if (character.size() == 1) return static_cast<unsigned char>(character[0]);
    return '?';
}

// The mathematical remainder, never negative.
std::int64_t modulo(std::int64_t a, std::int64_t range) {
    const std::int64_t r = a % range;
    return r < 0 ? r + range : r;
}

struct CharClass {
    char base;
    int range;
};

// The class of an ASCII letter or digit; range 0 for every other character.
CharClass class_of(char c) {
    if (c >= 'a' && c <= 'z') return {'a', 26};
    if (c >= 'A' && c <= 'Z') return {'A', 26};
    if (c >= '0' && c <= '9') return {'0', 10};
    return {0, 0};
}

// Moves each letter and digit of `s` forward (encode) or back (decode) within its class by
// k + i, i being its 1-based character position. The remainder is taken mathematically, so a
// negative key still lands inside the class and decode undoes encode for every key; other
// characters, whatever their length in bytes, are copied and still count one position each.
std::string shift(std::string_view s, std::string_view key_text, bool forward) {
    const std::int64_t key = whole_number(key_text.empty() ? "1" : key_text, kIntMin, kIntMax);
    std::string out;
    out.reserve(s.size());
    std::int64_t i = 1;
    for (std::size_t pos = 0; pos < s.size(); ++i) {
        const std::size_t next = pos + text::byte_offset_of_char(s.substr(pos), 1);
        const CharClass cls = class_of(s[pos]);
        if (cls.range == 0 || next - pos != 1) {
            out.append(s, pos, next - pos);
        } else {
            const std::int64_t c = s[pos] - cls.base;
            const std::int64_t step = modulo(key + i, cls.range);
            const std::int64_t moved = forward ? c + step : c + (cls.range - step);
            out += static_cast<char>(cls.base + modulo(moved, cls.range));
        }
        pos = next;
    }
    return out;
}

}  // namespace

// The code of the first character of a1; an empty a1 is an invalid argument.
std::string asc(const FunctionCall& call) {
    const std::string_view s = call.arg(1);
    if (s.empty()) throw invalid_argument();
    return std::to_string(code_of(s.substr(0, text::byte_offset_of_char(s, 1))));
}

// The character of code a1 (0 gives a NUL character); "" when a1 is not a number.
std::string chr(const FunctionCall& call) {
    const std::string_view a1 = call.arg(1);
    if (!value::is_numeric(a1)) return {};
    const std::int64_t code = whole_number(a1, kLongMin, kLongMax);
    if (code < 0 || code > 255) throw invalid_argument();
    return code_page()[code];
}

std::string encode(const FunctionCall& call) {
    return shift(call.arg(1), call.arg(2), true);
}

std::string decode(const FunctionCall& call) {
    return shift(call.arg(1), call.arg(2), false);
}

}  // namespace quiller::text_functions_detail
