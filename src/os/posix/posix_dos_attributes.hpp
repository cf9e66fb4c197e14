// Windows attributes on POSIX. They follow the mode bits and the name (see
// posix_files.cpp); hidden, system, archive and compressed can also be kept in the extended
// attribute "user.DOSATTRIB", as the text of the attribute word ("0x22"), where the file system
// supports extended attributes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>


namespace quiller::posix {

// The attribute bits that user.DOSATTRIB keeps.
std::uint32_t dos_attribute_mask();

// The H S A C bits kept in a file's user.DOSATTRIB, or nothing when it has none we can read.
std::optional<std::uint32_t> read_dos_attributes(const std::string& native_path);

// `attributes` (from the mode and the name) with the kept bits merged in: S, A and C come from
// the extended attribute when there is one; H is set by it or by a leading ".".
std::uint32_t with_dos_attributes(const std::string& native_path, std::uint32_t attributes);

}  // namespace quiller::posix
