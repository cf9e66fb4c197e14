#include "sync/listing.hpp"

#include <numeric>

namespace quiller::sync {

std::string join_path(std::string_view root, std::string_view relative) {
    std::string path(root);
    if (relative.empty()) return path;
    if (!path.empty() && path.back() != kSeparator && path.back() != '/' && path.back() != '\\')
        path += kSeparator;
    path += relative;
    return path;
}

std::uint32_t Listing::add(std::string_view name, double date, std::int16_t attributes,
                           std::int64_t size) {
    ScanRecord r;
    r.name_offset = names_.size();
    r.name_length = static_cast<std::uint32_t>(name.size());
    r.date = date;
    r.attributes = attributes;
    r.size = size;
    names_.append(name);
    records_.push_back(r);
    return static_cast<std::uint32_t>(records_.size() - 1);
}

void Listing::truncate(std::size_t count) {
    if (count >= records_.size()) return;
    names_.resize(records_[count].name_offset);
    records_.resize(count);
    order.clear();
}

void Listing::identity_order() {
    order.resize(records_.size());
    std::iota(order.begin(), order.end(), 0u);
}

void Listing::reserve(std::size_t records, std::size_t name_bytes) {
    records_.reserve(records);
    names_.reserve(name_bytes);
}

void Listing::append(const Listing& other) {
    const std::uint64_t base = names_.size();
    names_ += other.names_;
    for (ScanRecord r : other.records_) {
        r.name_offset += base;
        records_.push_back(r);
    }
    order.clear();
}

}  // namespace quiller::sync
