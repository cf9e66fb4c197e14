// Registry values as script text: type names, the text a value is written from and the text it
// is read back as.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "os/registry_store.hpp"

namespace quiller {

// The type a write asks for: REG_EXPAND_SZ, REG_MULTI_SZ and REG_DWORD (in any case); every other
// name, the empty one and REG_BINARY included, writes REG_SZ.
std::uint32_t write_type_code(std::string_view type_name);

// REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ; "UNKNOWN" for any other code.
std::string type_name(std::uint32_t code);

// The number a REG_DWORD is written from: the number read from the text's leading characters
// ("12abc" is 12, "&H1F" is 31), rounded half to even and wrapped to 32 bits as an unsigned
// number (-1 is 4294967295, 4294967296 is 0).
std::uint32_t dword_from_text(std::string_view text);

// The data written for a text of a write type code: REG_MULTI_SZ items are separated by "|".
RegistryData data_from_text(std::string_view text, std::uint32_t type);

// A value as text: strings as they are (up to a NUL), REG_MULTI_SZ items joined by "|",
// REG_DWORD and REG_QWORD in decimal, anything else as lower-case hex pairs ("01 ab ff").
std::string text_from_data(const RegistryData& data);

// The name a store knows a value by: "DEFAULT" (in any case) is the key's unnamed default value.
std::string_view stored_value_name(std::string_view name);
// The name an enumeration shows for a stored name: the default value is "DEFAULT".
std::string shown_value_name(std::string_view stored);

// Four little-endian bytes.
std::string dword_bytes(std::uint32_t v);

}  // namespace quiller
