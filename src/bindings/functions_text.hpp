// Shared pieces of the text function group, which is spread over functions_text*.cpp.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/failure.hpp"
#include "expr/functions.hpp"

namespace quiller::text_functions_detail {

// Limits of the platform's whole-number types.
inline constexpr std::int64_t kIntMin = -32768, kIntMax = 32767;
inline constexpr std::int64_t kLongMin = -2147483648LL, kLongMax = 2147483647LL;

// The number read from the leading characters of `s`, rounded half to even as the platform's
// whole-number conversions do. Throws the overflow failure outside [min, max].
std::int64_t whole_number(std::string_view s, std::int64_t min, std::int64_t max);

// The failure of a function called with an argument it can't use (a start before the first
// character, a negative length, a character code outside 0..255, `asc` of an empty text).
inline ScriptFailure invalid_argument() {
    return {"Invalid procedure call or argument", 5, {}};
}

// Code page functions (functions_text_code.cpp).
std::string asc(const FunctionCall& call);
std::string chr(const FunctionCall& call);
std::string encode(const FunctionCall& call);
std::string decode(const FunctionCall& call);

// Search functions (functions_text_search.cpp).
std::string find(const FunctionCall& call);
std::string findrev(const FunctionCall& call);
std::string word(const FunctionCall& call);

}  // namespace quiller::text_functions_detail
