// The key text of `sendkeys`: characters typed as they are, "+" Shift, "^" Ctrl and "%" Alt for
// the next key or for a group in parentheses, "~" Enter, and keys in braces: {ENTER}, {TAB},
// {F1}, ..., a special character such as {+} or {{}, and a repeat count as in {LEFT 3} or {x 5}.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "os/network.hpp"

namespace quiller {

// The highest repeat count a key in braces may carry.
inline constexpr int kMaxKeyRepeat = 1000;

struct KeyParse {
    std::vector<KeyStroke> keys;
    std::string error;  // empty when the whole text was understood
};

KeyParse parse_keys(std::string_view text);

// The virtual-key code of a key name such as "ENTER" or "f5" (any case), or 0.
std::uint16_t named_key(std::string_view name);

}  // namespace quiller
