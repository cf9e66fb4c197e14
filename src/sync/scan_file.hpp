// Scan files: a listing written as text. The first line names the scanned root, "*" and "sub"
// (or "nosub" when the scan did not enter sub-folders); every further line is one record in name
// order: name "*" day number "*" attributes "*" size.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "os/platform.hpp"
#include "sync/listing.hpp"

namespace quiller::sync {

// The text of a listing in its name order.
std::string scan_file_text(const Listing& listing);

// Replaces the scan file atomically (the old one stays whole until the new one is complete).
Status write_scan_file(FileSystem& files, const std::string& path, const Listing& listing);

struct ScanFileEvents {
    // A warning for the error report (severity 1): "(dc_scanfileread) ...".
    std::function<void(const std::string& message)> warning;
    // Every 1000 records: the count so far and the latest name.
    std::function<void(std::size_t count, std::string_view name)> progress;
};

// Reads the text of a scan file into `listing` (records in file order, `order` the identity).
// Lines may end in LF or CR LF, names may use "\" or "/". A line that is not a record is a
// warning and is left out.
void parse_scan_file(std::string_view path, std::string_view text, const ScanFileEvents& events,
                     Listing& listing);

// Reads a scan file.
Status read_scan_file(FileSystem& files, const std::string& path, const ScanFileEvents& events,
                      Listing& listing);

}  // namespace quiller::sync
