// The platform halves of the name order (name_order_posix.cpp, name_order_win32.cpp).
#pragma once

#include <string>
#include <string_view>

namespace quiller::sync::platform {

// Appends the simple case folding of `name`, which holds at least one byte above 0x7F.
void append_folded(std::string_view name, std::string& out);

// Appends the case-blind collation key of the folded name `folded`: no terminator, no zero
// bytes, so a key that is a prefix of another sorts first.
void append_collation_key(std::string_view folded, std::string& key);

}  // namespace quiller::sync::platform
