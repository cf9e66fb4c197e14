// The keys of all names are computed once into one arena; the sort then compares key bytes.
#include "sync/sort.hpp"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

#include "sync/name_order.hpp"

namespace quiller::sync {

void sort_listing(Listing& listing, const std::function<void()>& tick) {
    const std::size_t n = listing.size();
    listing.identity_order();
    if (n < 2) return;

    std::string keys;
    std::vector<std::uint64_t> starts(n + 1);
    for (std::uint32_t i = 0; i < n; ++i) {
        if (tick && i % 65536 == 0) tick();
        starts[i] = keys.size();
        append_name_key(listing.name(i), keys);
    }
    starts[n] = keys.size();

    const char* base = keys.data();
    const auto key = [&](std::uint32_t i) {
        return std::string_view(base + starts[i], starts[i + 1] - starts[i]);
    };
    std::sort(listing.order.begin(), listing.order.end(),
              [&](std::uint32_t a, std::uint32_t b) { return key(a) < key(b); });
}

}  // namespace quiller::sync
