// The walk of a directory tree into a listing: each folder's entries in the order the file
// system gives them, then its sub-folders one after another, depth first. Names are relative to
// the root, joined with the platform's separator.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "os/directory_reader.hpp"
#include "sync/listing.hpp"

namespace quiller::sync {

struct WalkOptions {
    bool subfolders = true;         // false: folders are neither recorded nor entered
    bool helper = true;             // list folders ahead on a second thread
    std::string tag = "(dirscan)";  // the routine named in the activity lines
};

struct WalkEvents {
    // A warning line for the activity display.
    std::function<void(const std::string& line)> activity;
    // Every 100 records: the count so far and the folder being walked (relative); false gives
    // the walk up.
    std::function<bool(std::size_t count, std::string_view folder)> progress;
    // Called before a folder whose listing failed for a passing reason is read again (the
    // first retry is attempt 1); false gives the walk up.
    std::function<bool(int attempt)> retry_wait;
};

// Appends the entries of `root` and, with sub-folders, of every folder below it. A sub-folder
// that can't be listed for good is a warning and counts as walked; one that fails for a passing
// reason is walked again, its records dropped first, until it succeeds. False when the root
// can't be listed or the walk was given up: `error` then holds the code (0 when given up).
bool walk_tree(const std::string& root, const WalkOptions& options, DirectoryReader& reader,
               const WalkEvents& events, Listing& listing, int& error);

}  // namespace quiller::sync
