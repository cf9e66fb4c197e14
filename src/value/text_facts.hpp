// What the interpreter asks of one text again and again: the characters that steer the argument
// splitter and the condition rewriter, whether the text is a number and which, whether it is a
// date and which. Worked out on first use and kept beside the text until it changes; every
// answer is exactly what asking the text itself gives.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "value/value.hpp"

namespace quiller::value {

class TextFacts {
  public:
    // The characters of a text that matter where it is put into a statement's line.
    enum Shape : std::uint16_t {
        kEmpty = 1 << 0,
        kBlank = 1 << 1,         // holds a blank
        kDoubleQuote = 1 << 2,   // holds a double quote
        kSingleQuote = 1 << 3,   // holds a "'"
        kCaret = 1 << 4,         // holds a "^"
        kOpensSpecial = 1 << 5,  // begins with a quote character, "^" or "{"
        kOperator = 1 << 6,      // holds "<", ">" or "="
        kStartsN = 1 << 7,       // begins with "n" or "N" (could begin the word "not")
        kUnquotes = 1 << 8,      // the unquoting rule shortens it (2+ characters, $ ^ " ' first)
    };
    // The shapes the first character decides, worked out whatever is wanted.
    static constexpr std::uint16_t kFirstCharacterShapes =
        kEmpty | kOpensSpecial | kStartsN | kUnquotes;

    // The text changed: everything is asked afresh.
    void forget() {
        known_ = 0;
        shapes_known_ = 0;
    }
    // The text is the general form of the whole number `v` (as `format_general_number` writes
    // a whole number below 1E+15): a number, read back as `v`, and never a date.
    void know_whole_number(double v);

    // The `wanted` shapes of the text (only those are worked out).
    std::uint16_t shape(std::string_view text, std::uint16_t wanted) const {
        if ((shapes_known_ & wanted) != wanted) learn_shape(text, wanted);
        return shape_ & wanted;
    }
    // is_numeric, read_leading_number and parse_date of the text.
    bool numeric(std::string_view text) const {
        return (known_ & kNumeric) ? numeric_ : learn_numeric(text);
    }
    double number(std::string_view text) const {
        return (known_ & kNumber) ? number_ : learn_number(text);
    }
    std::optional<double> date(std::string_view text, int current_year) const {
        if ((known_ & kDate) && (date_year_ == kAnyYear || date_year_ == current_year))
            return is_date_ ? std::optional<double>(date_) : std::nullopt;
        return learn_date(text, current_year);
    }

  private:
    void learn_shape(std::string_view text, std::uint16_t wanted) const;
    bool learn_numeric(std::string_view text) const;
    double learn_number(std::string_view text) const;
    std::optional<double> learn_date(std::string_view text, int current_year) const;

    enum Known : std::uint8_t { kNumeric = 1, kNumber = 2, kDate = 4 };
    static constexpr int kAnyYear = -1;
    mutable std::uint8_t known_ = 0;
    mutable bool numeric_ = false;
    mutable bool is_date_ = false;
    mutable std::uint16_t shape_ = 0;
    mutable std::uint16_t shapes_known_ = 0;
    mutable int date_year_ = 0;
    mutable double number_ = 0;
    mutable double date_ = 0;
};

// A text with its kept facts, if any: the questions asked of it go to the facts when there are
// some, else to the text.
struct Operand {
    std::string_view text;
    const TextFacts* facts = nullptr;

    bool numeric() const { return facts ? facts->numeric(text) : is_numeric(text); }
    double number() const { return facts ? facts->number(text) : read_leading_number(text); }
    std::optional<double> date(int current_year) const {
        return facts ? facts->date(text, current_year) : parse_date(text, current_year);
    }
};

// The `wanted` shapes of a text, worked out from its characters.
std::uint16_t text_shape(std::string_view text, std::uint16_t wanted = 0xFFFF);

}  // namespace quiller::value
