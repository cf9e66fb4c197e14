// Listings written as text for the synchronisation tests: "name:size:seconds:attributes" entries
// joined by ","; a name ending in "/" is a folder; size and seconds default to 0, attributes to
// 32 (archive). Times are seconds after midnight of one day.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "sync/listing.hpp"
#include "sync/sort.hpp"

namespace quiller::sync::text_listings {

constexpr double kDay = 46000;  // any day

struct Entry {
    std::string name;
    std::int64_t size = 0;
    double seconds = 0;
    std::int16_t attributes = kAttrArchive;
};

inline Listing listing(const std::vector<Entry>& entries) {
    Listing l;
    for (const Entry& e : entries) {
        const bool folder = e.name.back() == '/';
        l.add(folder ? e.name.substr(0, e.name.size() - 1) : e.name, kDay + e.seconds / 86400,
              folder ? std::int16_t{kAttrDirectory} : e.attributes, folder ? 0 : e.size);
    }
    sort_listing(l);
    return l;
}

inline std::vector<Entry> entries(const std::string& text) {
    std::vector<Entry> out;
    std::istringstream items(text);
    for (std::string item; std::getline(items, item, ',');) {
        std::istringstream fields(item);
        std::string name, size = "0", seconds = "0", attributes = "32";
        std::getline(fields, name, ':');
        std::getline(fields, size, ':');
        std::getline(fields, seconds, ':');
        std::getline(fields, attributes, ':');
        out.push_back({name, std::stoll(size), std::stod(seconds),
                       static_cast<std::int16_t>(std::stoi(attributes))});
    }
    return out;
}

}  // namespace quiller::sync::text_listings
