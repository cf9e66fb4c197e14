// The actions that make a target tree match its source: the two sorted listings are walked side
// by side and every difference becomes one action, in an order the executor can follow as it
// stands: a folder is made before its contents are copied, and a folder that goes is removed
// after everything inside it, innermost first.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sync/listing.hpp"
#include "sync/path_filters.hpp"

namespace quiller::sync {

enum class ActionKind : std::uint8_t { Reset, Copy, Replace, Del, Md, Rd, Rename, Rendir, Attrib };
inline constexpr int kActionKinds = 9;

// "reset", "copy", ... as the action list and the log name them.
std::string_view kind_name(ActionKind kind);

struct Action {
    ActionKind kind;
    std::int32_t source;  // record number in the source listing, -1 when there is none
    std::int32_t target;  // record number in the target listing, -1 when there is none
};

struct ActionList {
    std::vector<Action> actions;  // begins with the "reset"
    // Bytes the copies and replacements write, and what replacements and deletions free.
    std::int64_t bytes_written = 0;
    std::int64_t bytes_replaced = 0;
    std::int64_t bytes_deleted = 0;
    // Names that sort after the end marker and were skipped (one warning each).
    std::vector<std::string> beyond_end;

    // "Disk space required": the growth of the target, negative when it shrinks. Without
    // deletions the files that would have been deleted stay.
    std::int64_t space_required(bool with_deletions = true) const {
        return bytes_written - bytes_replaced - (with_deletions ? bytes_deleted : 0);
    }
    // The number of actions of a kind.
    std::int64_t count(ActionKind kind) const;
};

// A sorted listing and its root; the root is joined with the names for the filters only.
struct MergeSide {
    const Listing& listing;
    std::string_view root;
};

// The name a listing presents once it is exhausted; a name that sorts after it is skipped.
inline constexpr std::string_view kEndMarker = "zzzzzzzzzzzzzzzzzz";

ActionList compute_actions(const MergeSide& source, const MergeSide& target,
                           const PathFilters& filters);

// The text after the last separator ("\" or "/"), else after the last ":", else the whole name.
std::string_view last_component(std::string_view name);

}  // namespace quiller::sync
