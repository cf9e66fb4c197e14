// The formatter's inside: a format text is parsed once into a Picture (a small token list with
// the facts the renderers need) and kept in a tiny cache; the renderers then only walk tokens.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "value/ascii_class.hpp"

namespace quiller::value::detail {

enum class Tok : std::uint8_t {
    Literal,  // pool text [off, off + len)
    // Numbers.
    Zero,      // "0": a digit, or a zero where the number has none
    Hash,      // "#": a digit, or nothing
    Point,     // the first "."
    Percent,   // "%"
    Exponent,  // "E+" "E-" "e+" "e-" with its digits; see kExp* flags
    Text,      // "@" or "&": the value's general text
    // Dates and times.
    Day,
    Day2,
    DayAbbr,
    DayName,
    ShortDate,
    LongDate,
    Weekday,
    Week,
    Month,
    Month2,
    MonthAbbr,
    MonthName,
    Quarter,
    DayOfYear,
    Year2,
    Year4,
    Hour,
    Hour2,
    Minute,
    Minute2,
    Second,
    Second2,
    AmPm,  // morning text at [off, off + len), afternoon text of length n right behind it
    LongTime,
    GeneralDate,
};

// Exponent token: `n` holds these flags, `len` the least number of exponent digits.
constexpr std::uint8_t kExpUpper = 1;  // "E" rather than "e"
constexpr std::uint8_t kExpPlus = 2;   // "+": the sign is written for positive exponents too

struct Token {
    Tok kind = Tok::Literal;
    std::uint8_t n = 0;
    std::uint32_t off = 0;
    std::uint32_t len = 0;
};

// One ";"-separated part of a number picture.
struct NumberSection {
    std::uint32_t first = 0, count = 0;  // its tokens
    int int_places = 0;                  // digit placeholders before the point
    int int_min = 0;                     // of them, those from the first "0" on
    int frac_places = 0;                 // digit placeholders after the point
    int frac_min = 0;                    // of them, those up to the last "0"
    int scale = 0;                       // "," right of the integer digits: divide by 1000 each
    int percent = 0;                     // "%": multiply by 100 each
    bool grouping = false;               // "," between integer placeholders
    bool exponent = false;
};

enum class PictureKind : std::uint8_t {
    Number,
    Date,
    Text,
    GeneralNumber,
    GeneralDate,
    Boolean,  // tokens 0 and 1: the texts for non-zero and zero
};

enum class TextCase : std::uint8_t { Keep, Lower, Upper };

struct Picture {
    PictureKind kind = PictureKind::Number;
    bool twelve_hour = false;  // an AM/PM marker makes every hour count to 12
    TextCase text_case = TextCase::Keep;
    int section_count = 0;  // number pictures: 1 to 3 (a fourth section is never used)
    NumberSection sections[3];
    std::vector<Token> tokens;
    std::string pool;        // the literal texts the tokens point into
    std::size_t sealed = 0;  // tokens before this one take no more literal text

    std::string_view text(const Token& t) const { return {pool.data() + t.off, t.len}; }
    // Literal text, joined to a literal token right before it.
    void add_literal(std::string_view s);
    void add(Tok kind) { tokens.push_back(Token{kind, 0, 0, 0}); }
};

// Parsing (format_scan*.cpp, format_named.cpp).
Picture parse_picture(std::string_view format);  // a named format or a picture
bool parse_named(std::string_view format, Picture& out);
Picture parse_number_picture(std::string_view format);
Picture parse_date_picture(std::string_view format);

// True when `s` holds the lower-case `word` at `i`, in any case.
inline bool starts_with_blind(std::string_view s, std::size_t i, std::string_view word) {
    if (s.size() - i < word.size()) return false;
    for (std::size_t k = 0; k < word.size(); ++k)
        if (lower(s[i + k]) != word[k]) return false;
    return true;
}

// Reads a quoted text or a backslash escape starting at `s[i]` into `p` and moves `i` past it;
// false when `s[i]` starts neither. A quote left open takes the rest of the text.
bool read_literal(std::string_view s, std::size_t& i, Picture& p);

// The parsed picture of a format text, from a small per-thread cache of recent ones.
const Picture& cached_picture(std::string_view format);

// Counts the changes of the regional conventions, so that parsed pictures can be dropped
// (number_conventions.cpp).
std::uint32_t conventions_generation();

// The regional parts of dates (format_regional.cpp). The conventions' short-date and long-time
// pictures, or null while they are en-US's, whose fixed forms the renderer writes itself; and
// "General Date" (also "c"): the short date and the long time, the date alone at midnight and
// the time alone on day 0.
const Picture* regional_short_date();
const Picture* regional_long_time();
std::string general_date(double serial);

// The magnitude of a number as decimal digits: 0.d1 d2 ... dk times 10 to the power `point`,
// without trailing zeros; zero has no digits (format_digits.cpp).
struct DecimalForm {
    char digits[24];
    int count = 0;
    int point = 0;
    // Digit k (0-based), "0" outside the significant ones.
    char at(int k) const { return k >= 0 && k < count ? digits[k] : '0'; }
};

// |v| with 15 significant digits, correctly rounded, as the platform writes numbers; v finite.
DecimalForm decimal_form(double v);

// Keeps the first `keep` digits, rounding half away from zero; a carry out of the first digit
// moves the point one place. `keep` at or below 0 rounds to nothing or to a single "1".
void round_digits(DecimalForm& d, int keep);

// Rendering (format_number.cpp, format_date.cpp).
void render_number(const Picture& p, double v, std::string& out);
void render_date(const Picture& p, double serial, std::string& out);

}  // namespace quiller::value::detail
