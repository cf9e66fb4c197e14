// How the `shell` and `shutdown` statements read their arguments, and the environment expansion
// of a command line.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "os/platform.hpp"

namespace quiller::process {

// The window state from a statement's option text. Later tests win: "hidden" over "maxmized"
// (spelled so) over "minimized"; normal without any of them.
WindowState window_state(std::string_view options);

// The shutdown mode of a `shutdown` argument: not numeric or above 5 is 0; a number is rounded as
// the platform's integer conversion does (half to even). Nothing for a negative mode.
std::optional<int> shutdown_mode(std::string_view text);

// The action of a mode in words ("poweroff", "reboot force", "logoff"); empty outside 0 to 5.
std::string shutdown_action(int mode);

// Replaces %NAME% references by the environment's values (unset names give the empty text, "%%"
// gives "%"). Nothing when the text holds an odd number of "%".
std::optional<std::string> expand_environment(std::string_view text, Environment& environment);

}  // namespace quiller::process
