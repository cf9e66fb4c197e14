// The keys of all names are computed once into one arena. The sort then works on 8 bytes of key
// at a time: the record numbers are ordered by the key bytes at one depth, and every run of equal
// bytes whose keys go on is ordered by the next 8 bytes (a radix sort by 8-byte digits, each
// digit sorted by comparison). Only record numbers and their current digit move.
#include "sync/sort.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "sync/name_order.hpp"

namespace quiller::sync {
namespace {

struct Item {
    std::uint64_t digit;  // key bytes [depth, depth + 8), big-endian, zero-padded
    std::uint32_t record;
};

class KeySort {
  public:
    KeySort(const Listing& listing, const std::function<void()>& tick)
        : listing_(listing), tick_(tick) {
        const std::size_t n = listing.size();
        starts_.resize(n + 1);
        for (std::uint32_t i = 0; i < n; ++i) {
            if (tick_ && i % 65536 == 0) tick_();
            starts_[i] = keys_.size();
            append_name_key(listing.name(i), keys_);
        }
        starts_[n] = keys_.size();
    }

    void sort(std::vector<std::uint32_t>& order) {
        std::vector<Item> items(order.size());
        for (std::size_t i = 0; i < items.size(); ++i) items[i] = {digit(order[i], 0), order[i]};
        sort_range(items.data(), items.data() + items.size(), 0);
        for (std::size_t i = 0; i < items.size(); ++i) order[i] = items[i].record;
    }

  private:
    std::uint64_t length(std::uint32_t record) const {
        return starts_[record + 1] - starts_[record];
    }

    std::uint64_t digit(std::uint32_t record, std::uint64_t depth) const {
        const std::uint64_t len = length(record);
        unsigned char bytes[8] = {};
        if (depth < len)
            std::memcpy(bytes, keys_.data() + starts_[record] + depth,
                        std::min<std::uint64_t>(8, len - depth));
        std::uint64_t d = 0;
        for (const unsigned char b : bytes) d = (d << 8) | b;
        return d;
    }

    // A key never ends in a zero byte, so keys whose zero-padded digits agree up to the end of
    // the longer one are equal.
    void sort_range(Item* first, Item* last, std::uint64_t depth) {
        std::sort(first, last, [](const Item& a, const Item& b) { return a.digit < b.digit; });
        if (tick_ && last - first > 100000) tick_();
        for (Item* run = first; run != last;) {
            Item* end = run + 1;
            bool goes_on = length(run->record) > depth + 8;
            while (end != last && end->digit == run->digit) {
                goes_on = goes_on || length(end->record) > depth + 8;
                ++end;
            }
            if (end - run > 1 && goes_on) {
                for (Item* i = run; i != end; ++i) i->digit = digit(i->record, depth + 8);
                sort_range(run, end, depth + 8);
            } else if (end - run > 1) {  // names equal but for case: by their own bytes
                std::sort(run, end, [&](const Item& a, const Item& b) {
                    return listing_.name(a.record) < listing_.name(b.record);
                });
            }
            run = end;
        }
    }

    const Listing& listing_;
    std::string keys_;
    std::vector<std::uint64_t> starts_;
    const std::function<void()>& tick_;
};

}  // namespace

void sort_listing(Listing& listing, const std::function<void()>& tick) {
    listing.identity_order();
    if (listing.size() < 2) return;
    KeySort(listing, tick).sort(listing.order);
}

}  // namespace quiller::sync
