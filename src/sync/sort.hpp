// Puts a listing into name order (name_order.hpp): only the 32-bit record numbers of
// `Listing::order` move; the records stay where they are.
#pragma once

#include <functional>

#include "sync/listing.hpp"

namespace quiller::sync {

// Sorts all records of `listing` into `listing.order`. Names equal but for case are ordered by
// their bytes, so the order doesn't depend on the order of the records. `tick`, when given, is
// called now and then, so a window can stay alive.
void sort_listing(Listing& listing, const std::function<void()>& tick = {});

}  // namespace quiller::sync
