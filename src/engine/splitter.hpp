// The argument splitter: cuts a statement's argument text into numbered slots, honouring quotes
// (double quote, "'" and "^"), and takes the option text from braces at the end.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace quiller {

inline constexpr int kSlotCount = 12;  // slots 1..11 receive arguments; slot 12 stays empty

// Slots are numbered 1..12; index 0 is unused.
using Slots = std::array<std::string, kSlotCount + 1>;

// `for_set` applies the quoting rules of `set` (numbers, a lone operator sign and quoted texts
// keep quotes for the value evaluation). `options` receives the text between the braces, as
// written (callers lower-case it).
void split_arguments(std::string_view text, bool for_set, Slots& slots, std::string& options,
                     int limit = kSlotCount);

}  // namespace quiller
