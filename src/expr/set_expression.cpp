#include "expr/set_expression.hpp"

#include <cmath>

#include "value/text.hpp"
#include "value/value.hpp"
#include "engine/failure.hpp"
#include "engine/variables.hpp"

namespace quiller {
namespace {

std::string checked_number(double v) {
    if (!std::isfinite(v)) throw failures::overflow();
    return value::format_general_number(v);
}

// The date part of a day number (negative day numbers count their time away from zero).
double day_of(double serial) {
    return std::trunc(serial);
}

std::string subtract(std::string_view a_text, std::string_view b_text, bool numeric, double a,
                     double b, int year) {
    if (!numeric) {
        const auto date_a = value::parse_date(a_text, year);
        const auto date_b = value::parse_date(b_text, year);
        if (date_a || date_b) {
            // A non-date side counts from 1 January 1965.
            const double fallback = value::date_serial(1965, 1, 1);
            return checked_number(day_of(date_a.value_or(fallback)) -
                                  day_of(date_b.value_or(fallback)));
        }
        throw failures::type_mismatch();
    }
    return checked_number(a - b);
}

}  // namespace

std::string eval_value_expression(const Slots& words, int year) {
    const std::string_view a_text = text::unquote(words[2]);
    const std::string_view op = text::unquote(words[3]);
    const std::string_view b_text = text::unquote(words[4]);
    const std::string default_result(text::trim(a_text));

    const bool numeric = value::is_numeric(a_text) || value::is_numeric(b_text);
    const double a = numeric ? value::read_leading_number(a_text) : 0.0;
    const double b = numeric ? value::read_leading_number(b_text) : 0.0;

    if (op == "+") {
        if (!numeric) {
            if (a_text.size() + b_text.size() > kMaxTextLength)
                throw failures::out_of_string_space();
            return std::string(a_text) + std::string(b_text);
        }
        return checked_number(a + b);
    }
    if (op == "-") return subtract(a_text, b_text, numeric, a, b, year);
    if (op == "*") {
        if (!numeric) throw failures::type_mismatch();
        return checked_number(a * b);
    }
    if (op == "/") {
        if (!numeric) throw failures::type_mismatch();
        if (b == 0) throw a == 0 ? failures::overflow() : failures::division_by_zero();
        return checked_number(a / b);
    }
    return default_result;
}

}  // namespace quiller
