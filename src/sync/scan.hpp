// A directory scan as the statements run it: the remembered count of entries, the progress
// window, the walk with its warnings on the activity display; and the `dirscan` statement, which
// sorts the listing and writes it to a scan file.
#pragma once

#include <functional>
#include <string>

#include "os/directory_reader.hpp"
#include "os/platform.hpp"
#include "os/registry_operations.hpp"
#include "sync/listing.hpp"
#include "ui/host.hpp"

namespace quiller::sync {

// What a scan uses of the run.
struct ScanServices {
    FileSystem& files;
    DirectoryReader& reader;
    RegistryOperations& registry;  // the remembered counts
    Clock& clock;
    Host& host;
    // A line on the activity display (the output window, as `print` writes).
    std::function<void(const std::string& line)> activity;
    // A failure for the error report at warning level, with the system's text ("" for none).
    std::function<void(const std::string& message, const std::string& system_text)> warning;
    std::string tag = "(dirscan)";  // the routine named in messages
    bool helper = true;             // a second thread lists folders ahead
};

struct ScanOptions {
    bool subfolders = true;
    bool progress = false;  // the progress window, with the remembered count as its total
};

// Walks `root` into `listing` (root and sub-folder flag set). False when the walk failed; the
// failure is reported ("Scan of ... failed.  See error log.").
bool scan_tree(ScanServices& s, const std::string& root, const ScanOptions& options,
               Listing& listing);

// `dirscan` DIRECTORY SCANFILE: scan, sort, write the scan file.
void dirscan(ScanServices& s, const std::string& directory, const std::string& scan_file,
             const ScanOptions& options);

// The key under which scans remember their counts, one value per root.
extern const char* const kDirScansKey;

}  // namespace quiller::sync
