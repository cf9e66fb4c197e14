// The number and date recognisers and the general forms they are written back in.
#include "fuzz_input.hpp"
#include "value/value.hpp"

using namespace quiller;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (value::is_numeric(text)) {
        const double v = value::read_leading_number(text);
        (void)value::format_general_number(v);
    }
    (void)value::parse_locale_number(text);
    if (const auto date = value::parse_date(text, 2026)) (void)value::format_general_date(*date);
    return 0;
}
