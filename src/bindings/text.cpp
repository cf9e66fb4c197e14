// Texts: the functions len, mid, lcase, ucase, trim, replacestring; asc, chr, encode, decode
// (character codes); find, findrev, word (searching). Positions and lengths count Unicode
// characters (code points), never bytes.
//
// Codes are those of the Windows-1252 code page: 0-127 ASCII, 128-159 its own table ("€" is
// 128), 160-255 Latin-1. Any other character has no code and reads as 63 ("?"), as the code
// page conversion writes it.
//
// `find` and `findrev` lower-case both texts and then compare exactly; `word` finds its
// separator without regard to case (full case folding, so "SS" also cuts at "ß"). An empty text
// sought is found at every character position of a non-empty text and nowhere else: `find`
// gives the a3-th position (0 past the end), `findrev` the last position (the length of a1),
// and both give 0 in an empty text.
#include "bindings/text.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/failure.hpp"
#include "expr/functions.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller {
namespace {

// Limits of the platform's whole-number types.
constexpr std::int64_t kIntMin = -32768, kIntMax = 32767;

constexpr std::int64_t kLongMin = -2147483648LL, kLongMax = 2147483647LL;

// The number read from the leading characters of `s`, rounded half to even as the platform's
// whole-number conversions do. Throws the overflow failure outside [min, max].
std::int64_t whole_number(std::string_view s, std::int64_t min, std::int64_t max) {
    // nearbyint rounds half to even in the default rounding mode.
    const double v = std::nearbyint(value::read_leading_number(s));
    if (!(v >= static_cast<double>(min) && v <= static_cast<double>(max)))
        throw failures::overflow();
    return static_cast<std::int64_t>(v);
}

// The failure of a function called with an argument it can't use (a start before the first
// character, a negative length, a character code outside 0..255, `asc` of an empty text).
ScriptFailure invalid_argument() {
    return {"Invalid procedure call or argument", 5, {}};
}

// --- Character codes ----------------------------------------------------------------------

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

// --- Searching -----------------------------------------------------------------------------

constexpr std::size_t npos = std::string::npos;

// A text lower-cased for searching, with the way back to the character positions of the
// original. Lower-casing may turn one character into two ("İ" into "i" and a combining dot),
// so then the start of each original character is recorded.
class LowerText {
  public:
    explicit LowerText(std::string_view s) : lowered_(text::to_lower(s)) {
        if (text::char_count(lowered_) == text::char_count(s)) return;
        lowered_.clear();
        for (std::size_t pos = 0; pos < s.size();) {
            const std::size_t length = text::byte_offset_of_char(s.substr(pos), 1);
            starts_.push_back(lowered_.size());
            lowered_ += text::to_lower(s.substr(pos, length));
            pos += length;
        }
    }

    const std::string& text() const { return lowered_; }

    // The 1-based position in the original of the character holding byte `pos` of text().
    std::size_t position_of(std::size_t pos) const {
        if (starts_.empty()) return text::char_count(std::string_view(lowered_).substr(0, pos)) + 1;
        return static_cast<std::size_t>(std::upper_bound(starts_.begin(), starts_.end(), pos) -
                                        starts_.begin());
    }

    // The byte of text() where the original's 1-based position `p` starts (its size past the end).
    std::size_t byte_of(std::int64_t p) const {
        const auto index = static_cast<std::size_t>(p - 1);
        if (starts_.empty()) return text::byte_offset_of_char(lowered_, index);
        return index < starts_.size() ? starts_[index] : lowered_.size();
    }

  private:
    std::string lowered_;
    std::vector<std::size_t> starts_;  // empty when characters map one to one
};

std::size_t search(const std::string& hay, const std::string& needle, std::size_t from) {
    if (needle.empty()) return from < hay.size() ? from : npos;
    return hay.find(needle, from);
}

std::size_t next_char(std::string_view s, std::size_t pos) {
    return pos + text::byte_offset_of_char(s.substr(pos), 1);
}

// The end of the case-blind match of `sep` that starts at byte `hit` of `s`.
std::size_t match_end(std::string_view s, std::size_t hit, std::string_view sep) {
    std::size_t end = next_char(s, hit);
    while (end < s.size() && !text::iequals(s.substr(hit, end - hit), sep)) end = next_char(s, end);
    return end;
}

}  // namespace

namespace functions {

std::string len(const FunctionCall& call) {
    return std::to_string(text::char_count(call.arg(1)));
}

// a1 from the 1-based start a2, a3 characters long (an empty a3: the rest). A start before the
// first character or a negative length is an invalid argument; a start past the end gives "".
std::string mid(const FunctionCall& call) {
    const std::string_view s = call.arg(1);
    const std::int64_t start = whole_number(call.arg(2), kLongMin, kLongMax);
    if (start < 1) throw invalid_argument();
    const std::string_view rest = s.substr(text::byte_offset_of_char(s, start - 1));
    if (call.arg(3).empty()) return std::string(rest);
    const std::int64_t length = whole_number(call.arg(3), kLongMin, kLongMax);
    if (length < 0) throw invalid_argument();
    return std::string(rest.substr(0, text::byte_offset_of_char(rest, length)));
}

std::string lcase(const FunctionCall& call) {
    return text::to_lower(call.arg(1));
}

std::string ucase(const FunctionCall& call) {
    return text::to_upper(call.arg(1));
}

std::string trim(const FunctionCall& call) {
    return std::string(text::trim(call.arg(1)));
}

// Every occurrence of a2, found without regard to case, is replaced by a3. An empty a2 leaves
// a1 as it is.
std::string replacestring(const FunctionCall& call) {
    std::string s(call.arg(1));
    text::replace_all(s, call.arg(2), call.arg(3));
    return s;
}

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

// The position of the a3-th occurrence of a2 in a1 (empty a3: the first), overlapping
// occurrences counting; 0 when there are fewer or a3 is 0 or less. A non-empty a4 makes the
// first search start at position a3 instead of 1: a3 then is both the start and the count.
std::string find(const FunctionCall& call) {
    const std::string_view a3 = call.arg(3);
    const std::int64_t n = a3.empty() ? 1 : whole_number(a3, kLongMin, kLongMax);
    if (n <= 0) return "0";
    const LowerText hay(call.arg(1));
    const std::string needle = text::to_lower(call.arg(2));
    std::size_t from = hay.byte_of(call.arg(4).empty() ? 1 : n);
    for (std::int64_t count = 1;; ++count) {
        const std::size_t hit = search(hay.text(), needle, from);
        if (hit == npos) return "0";
        if (count == n) return std::to_string(hay.position_of(hit));
        from = next_char(hay.text(), hit);
    }
}

// The position of the last occurrence of a2 in a1; 0 when there is none.
std::string findrev(const FunctionCall& call) {
    const std::string_view a1 = call.arg(1);
    if (a1.empty()) return "0";
    const std::string needle = text::to_lower(call.arg(2));
    if (needle.empty()) return std::to_string(text::char_count(a1));
    const LowerText hay(a1);
    const std::size_t hit = hay.text().rfind(needle);
    return hit == npos ? "0" : std::to_string(hay.position_of(hit));
}

// The n-th piece (n = a3) of a1 cut at each occurrence of a2. An n of 0 or an empty a2 gives
// the whole of a1; a negative n or an n beyond the last piece gives "".
std::string word(const FunctionCall& call) {
    const std::string_view s = call.arg(1);
    const std::string_view sep = call.arg(2);
    const std::int64_t n = whole_number(call.arg(3), kLongMin, kLongMax);
    if (n == 0 || sep.empty()) return std::string(s);
    if (n < 0) return {};
    std::size_t from = 0;
    for (std::int64_t piece = 1; piece < n; ++piece) {
        const std::size_t hit = text::ifind(s, sep, from);
        if (hit == npos) return {};
        from = match_end(s, hit, sep);
    }
    const std::size_t hit = text::ifind(s, sep, from);
    return std::string(s.substr(from, hit == npos ? npos : hit - from));
}

}  // namespace functions

}  // namespace quiller
