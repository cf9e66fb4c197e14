// The scanner of the date/time recogniser, with the en-US month, day and AM/PM words.
#include "value/date_fields.hpp"

#include "value/ascii_class.hpp"

namespace quiller::value::detail {
namespace {

enum class WordKind : std::uint8_t { Month, DayName, Am, Pm };

struct Word {
    std::string_view text;  // lower case
    WordKind kind;
    std::uint8_t month;
};

// Searched in this order; the first word that starts the remaining text wins, so full names
// are tried before their abbreviations. A word's letters may be followed directly by more text.
constexpr Word kWords[] = {
    {"january", WordKind::Month, 1},
    {"february", WordKind::Month, 2},
    {"march", WordKind::Month, 3},
    {"april", WordKind::Month, 4},
    {"may", WordKind::Month, 5},
    {"june", WordKind::Month, 6},
    {"july", WordKind::Month, 7},
    {"august", WordKind::Month, 8},
    {"september", WordKind::Month, 9},
    {"october", WordKind::Month, 10},
    {"november", WordKind::Month, 11},
    {"december", WordKind::Month, 12},
    {"jan", WordKind::Month, 1},
    {"feb", WordKind::Month, 2},
    {"mar", WordKind::Month, 3},
    {"apr", WordKind::Month, 4},
    {"jun", WordKind::Month, 6},
    {"jul", WordKind::Month, 7},
    {"aug", WordKind::Month, 8},
    {"sep", WordKind::Month, 9},
    {"oct", WordKind::Month, 10},
    {"nov", WordKind::Month, 11},
    {"dec", WordKind::Month, 12},
    {"sunday", WordKind::DayName, 0},
    {"monday", WordKind::DayName, 0},
    {"tuesday", WordKind::DayName, 0},
    {"wednesday", WordKind::DayName, 0},
    {"thursday", WordKind::DayName, 0},
    {"friday", WordKind::DayName, 0},
    {"saturday", WordKind::DayName, 0},
    {"sun", WordKind::DayName, 0},
    {"mon", WordKind::DayName, 0},
    {"tue", WordKind::DayName, 0},
    {"wed", WordKind::DayName, 0},
    {"thu", WordKind::DayName, 0},
    {"fri", WordKind::DayName, 0},
    {"sat", WordKind::DayName, 0},
    {"am", WordKind::Am, 0},
    {"pm", WordKind::Pm, 0},
};

bool starts_with_word(std::string_view rest, std::string_view word) {
    if (rest.size() < word.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (lower(rest[i]) != word[i]) return false;
    }
    return true;
}

// The letters that begin a word of the table, as bits 0 (a) to 25 (z).
constexpr std::uint32_t kInitials = [] {
    std::uint32_t bits = 0;
    for (const Word& w : kWords) bits |= 1u << (w.text[0] - 'a');
    return bits;
}();

const Word* find_word(std::string_view rest) {
    const char first = lower(rest[0]);  // a letter
    if (!((kInitials >> (first - 'a')) & 1u)) return nullptr;
    for (const Word& w : kWords) {
        if (starts_with_word(rest, w.text)) return &w;
    }
    return nullptr;
}

class Scanner {
  public:
    explicit Scanner(DateFields& f) : f_(f) {}
    bool run(std::string_view s);

  private:
    bool number(std::string_view s, std::size_t& i);
    bool letters(std::string_view s, std::size_t& i);
    bool meridiem(std::uint8_t flag);
    bool separator(std::string_view s, std::size_t i);

    DateFields& f_;
    int date_separators_ = 0;
};

bool Scanner::run(std::string_view s) {
    std::size_t i = 0;
    while (i < s.size()) {
        char c = s[i];
        bool ok = is_digit(c) ? number(s, i) : is_alpha(c) ? letters(s, i) : separator(s, i++);
        if (!ok) return false;
    }
    return true;
}

bool Scanner::number(std::string_view s, std::size_t& i) {
    if (f_.count == DateFields::kMax) return false;
    std::uint64_t v = 0;
    for (; i < s.size() && is_digit(s[i]); ++i) {
        v = v * 10 + (s[i] - '0');
        if (v > UINT32_MAX) v = UINT32_MAX;
    }
    f_.value[f_.count++] = static_cast<std::uint32_t>(v);
    return true;
}

bool Scanner::letters(std::string_view s, std::size_t& i) {
    const Word* w = find_word(s.substr(i));
    if (!w) {  // a lone "a" or "p" stands for AM or PM
        char c = lower(s[i++]);
        return (c == 'a' || c == 'p') && f_.count > 0 && !f_.meridiem &&
               meridiem(c == 'a' ? kAm : kPm);
    }
    i += w->text.size();
    switch (w->kind) {
        case WordKind::Month:
            if (f_.count == DateFields::kMax) return false;
            f_.value[f_.count] = w->month;
            f_.flags[f_.count++] = kMonthName;
            return true;
        case WordKind::DayName:
            return true;
        case WordKind::Am:
            return meridiem(kAm);
        case WordKind::Pm:
            return meridiem(kPm);
    }
    return false;
}

bool Scanner::meridiem(std::uint8_t flag) {
    if (f_.count == 0 || f_.meridiem) return false;
    f_.flags[f_.count - 1] |= flag;
    f_.meridiem = flag;
    return true;
}

// Any other character at position i; separators must follow a number and precede more text.
bool Scanner::separator(std::string_view s, std::size_t i) {
    char c = s[i];
    bool last = i + 1 == s.size();
    if (is_blank(c)) return true;
    if (c == ',') return !last;
    if (c == ':' || c == '.') {
        if (f_.count == 0 || last) return false;
        f_.flags[f_.count - 1] |= kTimeSep;
        return true;
    }
    if (c == '/' || c == '-') return ++date_separators_ <= 2 && f_.count > 0 && !last;
    return false;
}

}  // namespace

bool scan_date_fields(std::string_view s, DateFields& out) {
    out = DateFields{};
    return Scanner(out).run(s);
}

}  // namespace quiller::value::detail
