#include "value/text_facts.hpp"

#include "value/value.hpp"

namespace quiller::value {

std::uint16_t text_shape(std::string_view text) {
    if (text.empty()) return TextFacts::kEmpty;
    std::uint16_t s = 0;
    const char first = text.front();
    if (first == '"' || first == '\'' || first == '^' || first == '{')
        s |= TextFacts::kOpensSpecial;
    if (first == 'n' || first == 'N') s |= TextFacts::kStartsN;
    if (text.size() >= 2 && (first == '$' || first == '^' || first == '"' || first == '\''))
        s |= TextFacts::kUnquotes;
    for (const char c : text) {
        switch (c) {
            case ' ':
                s |= TextFacts::kBlank;
                break;
            case '"':
                s |= TextFacts::kDoubleQuote;
                break;
            case '\'':
                s |= TextFacts::kSingleQuote;
                break;
            case '^':
                s |= TextFacts::kCaret;
                break;
            case '<':
            case '>':
            case '=':
                s |= TextFacts::kOperator;
                break;
            default:
                break;
        }
    }
    return s;
}

void TextFacts::know_whole_number(double v) {
    known_ = kShape | kNumeric | kNumber;
    shape_ = 0;  // digits, maybe after a "-"
    numeric_ = true;
    number_ = v;
    // A lone whole number is never a date, whatever the year.
    is_date_ = false;
    known_ |= kDate;
    date_year_ = kAnyYear;
}

std::uint16_t TextFacts::learn_shape(std::string_view text) const {
    shape_ = text_shape(text);
    known_ |= kShape;
    return shape_;
}

bool TextFacts::learn_numeric(std::string_view text) const {
    numeric_ = is_numeric(text);
    known_ |= kNumeric;
    return numeric_;
}

double TextFacts::learn_number(std::string_view text) const {
    number_ = read_leading_number(text);
    known_ |= kNumber;
    return number_;
}

// The answer holds for the year it was read for (a whole number's for every year).
std::optional<double> TextFacts::learn_date(std::string_view text, int current_year) const {
    const std::optional<double> d = parse_date(text, current_year);
    is_date_ = d.has_value();
    date_ = d.value_or(0);
    date_year_ = current_year;
    known_ |= kDate;
    return d;
}

}  // namespace quiller::value
