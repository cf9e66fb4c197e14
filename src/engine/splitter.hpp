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
// The quoting rule of `set` for slot `index`: a quoted argument gets its own `delimiter` back; an
// unquoted number, or a lone operator sign in slot 3, is wrapped in double quotes. `numeric` is
// whether the slot's text passes the number test.
void quote_for_set(std::string& slot, int index, bool quoted, char delimiter, bool numeric);
bool is_quote_character(char c);

void split_arguments(std::string_view text, bool for_set, Slots& slots, std::string& options,
                     int limit = kSlotCount);

}  // namespace quiller
