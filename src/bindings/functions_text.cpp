// The text function group: the table and the plain text functions. Positions and lengths count
// Unicode characters (code points), never bytes.
#include "bindings/functions_text.hpp"

#include <array>
#include <cmath>

#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller {
namespace text_functions_detail {

std::int64_t whole_number(std::string_view s, std::int64_t min, std::int64_t max) {
    // nearbyint rounds half to even in the default rounding mode.
    const double v = std::nearbyint(value::read_leading_number(s));
    if (!(v >= static_cast<double>(min) && v <= static_cast<double>(max)))
        throw failures::overflow();
    return static_cast<std::int64_t>(v);
}

}  // namespace text_functions_detail

namespace {

using namespace text_functions_detail;

std::string len(const FunctionCall& call) {
    return std::to_string(text::char_count(call.arg(1)));
}

// a1 from the 1-based start a2, a3 characters long (an empty a3: the rest). A start before the
// first character or a negative length is an invalid argument; a start past the end gives "".
std::string mid(const FunctionCall& call) {
    const std::string_view s = call.arg(1);
    const std::int64_t start = whole_number(call.arg(2), kLongMin, kLongMax);
    if (start < 1) throw invalid_argument();
    const std::string_view rest = s.substr(text::byte_offset_of_char(s, start - 1));
    if (call.arg(3).empty()) return std::string(rest);
    const std::int64_t length = whole_number(call.arg(3), kLongMin, kLongMax);
    if (length < 0) throw invalid_argument();
    return std::string(rest.substr(0, text::byte_offset_of_char(rest, length)));
}

std::string lcase(const FunctionCall& call) {
    return text::to_lower(call.arg(1));
}

std::string ucase(const FunctionCall& call) {
    return text::to_upper(call.arg(1));
}

std::string trim(const FunctionCall& call) {
    return std::string(text::trim(call.arg(1)));
}

// Every occurrence of a2, found without regard to case, is replaced by a3. An empty a2 leaves
// a1 as it is.
std::string replacestring(const FunctionCall& call) {
    std::string s(call.arg(1));
    text::replace_all(s, call.arg(2), call.arg(3));
    return s;
}

constexpr std::array kRows = {
    FunctionDef{"asc", asc},       FunctionDef{"chr", chr},
    FunctionDef{"decode", decode}, FunctionDef{"encode", encode},
    FunctionDef{"find", find},     FunctionDef{"findrev", findrev},
    FunctionDef{"lcase", lcase},   FunctionDef{"len", len},
    FunctionDef{"mid", mid},       FunctionDef{"replacestring", replacestring},
    FunctionDef{"trim", trim},     FunctionDef{"ucase", ucase},
    FunctionDef{"word", word},
};

}  // namespace

std::span<const FunctionDef> text_functions() {
    return kRows;
}

}  // namespace quiller
