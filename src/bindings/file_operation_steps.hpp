// The work of the file statements (file_operations.cpp dispatches to these) and the
// pieces of it that stand alone: attribute flags and listing lines.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "os/file_system.hpp"

namespace quiller {
class Engine;
}

namespace quiller::fileops {

void run_copy(Engine& e, FileSystem& ops);
void run_del(Engine& e, FileSystem& ops);
void run_dir(Engine& e, FileSystem& ops);
void run_md(Engine& e, FileSystem& ops);
void run_rd(Engine& e, FileSystem& ops);
void run_rename(Engine& e, FileSystem& ops);
void run_setattrib(Engine& e, FileSystem& ops);

// Attribute bits to set and to clear.
struct AttributeChange {
    std::uint32_t set = 0;
    std::uint32_t clear = 0;
};

// Reads flags such as "+R", "-h", "+RH-A" or "+R -S" from any number of words: a sign applies
// to the letters after it (R H S A C, any case); a later flag for the same letter wins. Nothing
// when a word holds anything else (that word in `bad`) or no flag at all.
std::optional<AttributeChange> parse_attribute_flags(const std::vector<std::string_view>& words,
                                                     std::string& bad);

// One line of a directory listing: local date and time, the size (or <DIR>), the name.
std::string listing_line(const FileEntry& entry, std::string_view shown_name);

}  // namespace quiller::fileops
