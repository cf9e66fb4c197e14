#include "value/text_facts.hpp"

#include <cstring>

#include "value/value.hpp"

namespace quiller::value {

namespace {

bool holds(std::string_view text, char c) {
    return std::memchr(text.data(), c, text.size()) != nullptr;
}

}  // namespace

// The shapes of the first character always; those of characters anywhere only when wanted.
std::uint16_t text_shape(std::string_view text, std::uint16_t wanted) {
    if (text.empty()) return TextFacts::kEmpty;
    std::uint16_t s = 0;
    const char first = text.front();
    if (first == '"' || first == '\'' || first == '^' || first == '{')
        s |= TextFacts::kOpensSpecial;
    if (first == 'n' || first == 'N') s |= TextFacts::kStartsN;
    if (text.size() >= 2 && (first == '$' || first == '^' || first == '"' || first == '\''))
        s |= TextFacts::kUnquotes;
    if ((wanted & TextFacts::kBlank) && holds(text, ' ')) s |= TextFacts::kBlank;
    if ((wanted & TextFacts::kDoubleQuote) && holds(text, '"')) s |= TextFacts::kDoubleQuote;
    if ((wanted & TextFacts::kSingleQuote) && holds(text, '\'')) s |= TextFacts::kSingleQuote;
    if ((wanted & TextFacts::kCaret) && holds(text, '^')) s |= TextFacts::kCaret;
    if ((wanted & TextFacts::kOperator) &&
        (holds(text, '<') || holds(text, '>') || holds(text, '=')))
        s |= TextFacts::kOperator;
    return s;
}

void TextFacts::know_whole_number(double v) {
    known_ = kNumeric | kNumber;
    shape_ = 0;  // digits, maybe after a "-"
    shapes_known_ = 0xFFFF;
    numeric_ = true;
    number_ = v;
    // A lone whole number is never a date, whatever the year.
    is_date_ = false;
    known_ |= kDate;
    date_year_ = kAnyYear;
}

void TextFacts::learn_shape(std::string_view text, std::uint16_t wanted) const {
    const std::uint16_t missing = wanted & static_cast<std::uint16_t>(~shapes_known_);
    shape_ = static_cast<std::uint16_t>((shape_ & shapes_known_) | text_shape(text, missing));
    shapes_known_ |= static_cast<std::uint16_t>(missing | kFirstCharacterShapes);
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
