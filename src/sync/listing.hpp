// A listing: the scan records of one directory tree, their names in one arena, and the record
// numbers in name order. Records never move once added; sorting permutes `order` only.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "os/file_attributes.hpp"

namespace quiller::sync {

// The separator of relative names in listings and scan files.
#ifdef _WIN32
constexpr char kSeparator = '\\';
#else
constexpr char kSeparator = '/';
#endif

// `root` and a relative name joined into a path (`root` alone for an empty name).
std::string join_path(std::string_view root, std::string_view relative);

// One file or folder. The name is the path relative to the scanned root.
struct ScanRecord {
    std::uint64_t name_offset = 0;  // into the listing's name arena
    std::int64_t size = 0;          // bytes; 0 for a folder
    double date = 0;                // last modified, local time as a day number
    std::uint32_t name_length = 0;
    std::int16_t attributes = 0;

    bool is_folder() const { return (attributes & kAttrDirectory) != 0; }
};

class Listing {
  public:
    std::string root;                  // the scanned root, as given
    bool subfolders = true;            // false when the scan did not enter sub-folders
    std::vector<std::uint32_t> order;  // record numbers in name order
    std::size_t warnings = 0;          // warnings the scan or the reading of it reported

    std::size_t size() const { return records_.size(); }
    bool empty() const { return records_.empty(); }
    // The count as scan files and actions use it: the number of the last record, -1 when empty.
    std::int64_t last() const { return static_cast<std::int64_t>(records_.size()) - 1; }

    // Appends a record named `name`; returns its number.
    std::uint32_t add(std::string_view name, double date, std::int16_t attributes,
                      std::int64_t size);

    const ScanRecord& record(std::uint32_t number) const { return records_[number]; }
    ScanRecord& record(std::uint32_t number) { return records_[number]; }
    // Valid until the next add.
    std::string_view name(std::uint32_t number) const {
        const ScanRecord& r = records_[number];
        return {names_.data() + r.name_offset, r.name_length};
    }
    // The record at position `position` of the name order.
    const ScanRecord& sorted(std::size_t position) const { return records_[order[position]]; }
    std::string_view sorted_name(std::size_t position) const { return name(order[position]); }

    // Drops every record from number `count` on (with their names); `order` is cleared.
    void truncate(std::size_t count);
    // Sets `order` to 0, 1, 2 ... (a listing read in name order).
    void identity_order();
    void reserve(std::size_t records, std::size_t name_bytes);
    // Appends every record of `other` (in its record order); `order` is cleared.
    void append(const Listing& other);

  private:
    std::string names_;
    std::vector<ScanRecord> records_;
};

}  // namespace quiller::sync
