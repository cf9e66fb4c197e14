#include "sync/path_filters.hpp"

#include "value/text.hpp"

namespace quiller::sync {

void PathFilters::add(std::string_view pattern, bool include) {
    entries_.push_back({text::to_lower(pattern), include});
}

bool PathFilters::excluded(std::string_view path) const {
    if (entries_.empty()) return false;
    const std::string lower = text::to_lower(path);
    bool out = false;
    for (const Entry& e : entries_)
        if (!e.include && lower.find(e.pattern) != std::string::npos) {
            out = true;
            break;
        }
    if (!out) return false;
    for (const Entry& e : entries_)
        if (e.include && lower.find(e.pattern) != std::string::npos) return false;
    return true;
}

}  // namespace quiller::sync
