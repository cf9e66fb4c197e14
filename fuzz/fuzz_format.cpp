// The formatter: a value (line 1, read as a number) written with a format (the rest) as a
// number and as a date.
#include <cmath>

#include "fuzz_input.hpp"
#include "value/format.hpp"
#include "value/value.hpp"

using namespace quiller;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input in(data, size);
    const std::string_view number = in.line();
    const std::string_view format = in.rest();
    const double v = value::read_leading_number(number);
    if (std::isfinite(v)) (void)value::format_number(v, format);
    if (const auto date = value::parse_date(number, 2026)) (void)value::format_date(*date, format);
    // Day numbers of the years 100 to 9999, the range dates have.
    if (v >= -657434 && v < 2958466) (void)value::format_date(v, format);
    return 0;
}
