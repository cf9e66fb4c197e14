// The parts of the Win32 network service, one file each: accounts and names, connections,
// keystrokes.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "os/network.hpp"
#include "os/win32/win32_handle.hpp"

namespace quiller::win32 {

// Accounts and names (win32_network_accounts.cpp).
std::string computer_name_as(COMPUTER_NAME_FORMAT format);
std::string logon_user_name();
std::string logon_domain();
std::optional<std::vector<std::string>> logon_user_groups();
// "\\NAME" of a domain controller of `domain` (empty: the computer's domain); empty when none.
std::string domain_controller_of(const std::string& domain);

// The text of a failure of the network functions as "text (code)", the provider's own text
// when there is one (win32_network.cpp).
std::string network_error_text(DWORD code);

// Types the keys into the active window; the empty text, or the failure's text
// (win32_network_keys.cpp).
std::string send_key_strokes(std::span<const KeyStroke> keys);

}  // namespace quiller::win32
