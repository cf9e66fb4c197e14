// Adjusting a master tree before it is mirrored onto its copy, so that nothing changed in the
// copy since the last synchronisation is lost: a three-way comparison by name (case-blind) of the
// master as it is, the copy as it is, and the base, the copy as it stood after the last
// synchronisation. Only the master changes.
//
//   copy since base        master since base          the master
//   changed or added       unchanged, or absent        takes the copy's entry
//   removed                unchanged                   loses its entry
//   changed                changed, now equal          nothing
//   changed                changed differently         keeps its file; the copy's goes beside
//                                                      it as "NAME (LABEL).EXT" (a conflict)
//   changed                removed                     takes the copy's entry back
//   unchanged              anything                    nothing (the mirror carries it)
//
// "Unchanged" is the mirror's rule: equal sizes and time stamps less than 5 seconds apart; a
// folder is unchanged while it exists. A folder goes only when nothing below it stays. An entry
// whose kind differs (file against folder) on the two sides is a conflict: the master keeps its
// entry and the copy's (a folder with all it holds) goes beside it. Excluded names are left alone.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sync/actions.hpp"
#include "sync/listing.hpp"
#include "sync/path_filters.hpp"

namespace quiller::sync {

enum class AdjustKind : std::uint8_t {
    Md,        // a folder of the copy made in the master
    Copy,      // a file new in the copy
    Replace,   // a file changed in the copy over the master's unchanged one
    Restore,   // a file changed in the copy that the master had removed
    Conflict,  // the copy's version beside the master's
    Del,       // a file removed in the copy
    Rd,        // a folder removed in the copy
};

struct AdjustStep {
    AdjustKind kind;
    std::int32_t copy;    // record in the copy's listing, -1 for none
    std::int32_t master;  // record in the master's listing, -1 for none
    std::string name;     // the name in the master that is written or removed
};

struct AdjustPlan {
    // Folders made (outermost first), files written, files removed, folders removed (innermost
    // first): an order that can be carried out as it stands.
    std::vector<AdjustStep> steps;
    std::int64_t conflicts = 0;
    std::int64_t removals_held = 0;  // removals left out because they were not allowed
    std::int64_t bytes_written = 0;
    std::int64_t bytes_replaced = 0;
};

struct AdjustInput {
    MergeSide master;  // the three listings sorted (sort.hpp)
    MergeSide copy;
    const Listing& base;
    const PathFilters& filters;
    std::string_view label;  // the copy's name in conflict names
    bool removals = true;    // false: nothing is removed from the master
};

AdjustPlan plan_adjustment(const AdjustInput& input);

// "report.txt" with label "Server" and number 1: "report (Server).txt"; number 2:
// "report (Server 2).txt". A leading dot does not start an extension; the folders stay.
std::string conflict_name(std::string_view name, std::string_view label, int number);

}  // namespace quiller::sync
