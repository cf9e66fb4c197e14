#include "expr/set_expression.hpp"

#include <cmath>

#include "value/text.hpp"
#include "value/value.hpp"
#include "engine/failure.hpp"
#include "engine/variables.hpp"

namespace quiller {
namespace {

// The result's text; `whole` learns the number when reading the text back gives it exactly.
std::string checked_number(double v, std::optional<double>* whole) {
    if (!std::isfinite(v)) throw failures::overflow();
    if (whole && std::abs(v) < 1e15 && v == std::trunc(v)) *whole = v == 0 ? 0.0 : v;
    return value::format_general_number(v);
}

// The date part of a day number (negative day numbers count their time away from zero).
double day_of(double serial) {
    return std::trunc(serial);
}

std::string subtract(const value::Operand& a_text, const value::Operand& b_text, bool numeric,
                     double a, double b, int year, std::optional<double>* whole) {
    if (!numeric) {
        const auto date_a = a_text.date(year);
        const auto date_b = b_text.date(year);
        if (date_a || date_b) {
            // A non-date side counts from 1 January 1965.
            const double fallback = value::date_serial(1965, 1, 1);
            return checked_number(
                day_of(date_a.value_or(fallback)) - day_of(date_b.value_or(fallback)), whole);
        }
        throw failures::type_mismatch();
    }
    return checked_number(a - b, whole);
}

const value::TextFacts* operand_facts(const SlotFacts* facts, int word) {
    return facts ? facts->operand[static_cast<std::size_t>(word)] : nullptr;
}

}  // namespace

bool is_value_expression(const Slots& words) {
    const std::string_view word2 = words[2];
    return !word2.empty() &&
           (word2.front() == '^' || word2.front() == '"' || word2.front() == '\'');
}

std::string eval_value_expression(const Slots& words, int year, const SlotFacts* facts,
                                  std::optional<double>* whole) {
    const value::Operand a_text{text::unquote(words[2]), operand_facts(facts, 2)};
    const std::string_view op = text::unquote(words[3]);
    const value::Operand b_text{text::unquote(words[4]), operand_facts(facts, 4)};

    const bool numeric = a_text.numeric() || b_text.numeric();
    const double a = numeric ? a_text.number() : 0.0;
    const double b = numeric ? b_text.number() : 0.0;

    if (op == "+") {
        if (!numeric) {
            if (a_text.text.size() + b_text.text.size() > kMaxTextLength)
                throw failures::out_of_string_space();
            std::string sum(a_text.text);
            sum += b_text.text;
            return sum;
        }
        return checked_number(a + b, whole);
    }
    if (op == "-") return subtract(a_text, b_text, numeric, a, b, year, whole);
    if (op == "*") {
        if (!numeric) throw failures::type_mismatch();
        return checked_number(a * b, whole);
    }
    if (op == "/") {
        if (!numeric) throw failures::type_mismatch();
        if (b == 0) throw a == 0 ? failures::overflow() : failures::division_by_zero();
        return checked_number(a / b, whole);
    }
    return std::string(text::trim(a_text.text));
}

}  // namespace quiller
