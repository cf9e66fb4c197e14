// Dates and numbers: the functions date, time, filedate, random.
#include "bindings/dates_numbers.hpp"

#include <cmath>
#include <optional>
#include <string>

#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "expr/functions.hpp"
#include "value/format.hpp"
#include "value/value.hpp"

namespace quiller {
namespace {

std::string_view or_default(std::string_view format, std::string_view fallback) {
    return format.empty() ? fallback : format;
}

// A text as a 16-bit whole number: the nearest one, halves to even.
int to_int16(std::string_view text) {
    const std::optional<double> v = value::parse_locale_number(text);
    if (!v) throw failures::type_mismatch();
    const double n = std::nearbyint(*v);
    if (!(n >= -32768 && n <= 32767)) throw failures::overflow();
    return static_cast<int>(n);
}

}  // namespace

namespace functions {

// `date` a1: today with format a1, "Short Date" when empty.
std::string date(const FunctionCall& c) {
    const double now = c.engine.platform().clock->now();
    return value::format_date(std::floor(now), or_default(c.arg(1), "Short Date"));
}

// `time` a1: the time of day with format a1, "Long Time" when empty.
std::string time(const FunctionCall& c) {
    const double now = c.engine.platform().clock->now();
    return value::format_date(now - std::floor(now), or_default(c.arg(1), "Long Time"));
}

// `filedate` a1 path, a2 format ("General Date" when empty): the last-modified local time. A
// file that can't be read ends the statement.
std::string filedate(const FunctionCall& c) {
    const auto status = c.engine.platform().files->status(std::string(c.arg(1)));
    if (!status) throw failures::file_not_found();
    return value::format_date(value::local_day_number(status->modified),
                              or_default(c.arg(2), "General Date"));
}

// `random` a1 n: the whole part of n times the generator's next value in [0, 1), plus 1; so
// 1 to n for a positive n.
std::string random(const FunctionCall& c) {
    const int n = to_int16(c.arg(1));
    const double r = static_cast<double>(c.engine.random()() >> 11) * 0x1.0p-53;  // [0, 1)
    return value::format_general_number(std::floor(n * r + 1));
}

}  // namespace functions

}  // namespace quiller
