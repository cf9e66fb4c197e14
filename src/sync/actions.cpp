#include "sync/actions.hpp"

#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "os/file_operation_paths.hpp"
#include "sync/name_order.hpp"
#include "value/text.hpp"

namespace quiller::sync {
namespace {

constexpr std::string_view kKindNames[kActionKinds] = {"reset", "copy",   "replace", "del",   "md",
                                                       "rd",    "rename", "rendir",  "attrib"};

// Time stamps closer than this count as the same.
constexpr double kSameTimeSeconds = 5;

bool is_separator(char c) {
#ifdef _WIN32
    return c == '\\' || c == '/';
#else
    return c == '/';
#endif
}

bool ascii_equal_ignoring_case(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const unsigned char x = a[i], y = b[i];
        if (x == y) continue;
        if (x >= 0x80 || y >= 0x80 || (x | 0x20) != (y | 0x20) || (x | 0x20) < 'a' ||
            (x | 0x20) > 'z')
            return false;
    }
    return true;
}

// The name order, with the answers that need no collation key first: most names of two
// listings of one tree are the same bytes, or the same but for the case of ASCII letters.
int compare(std::string_view a, std::string_view b) {
    if (ascii_equal_ignoring_case(a, b)) return 0;
    return compare_names(a, b);
}

// One side of the merge: its position, and the entry there or the end marker.
class Cursor {
  public:
    explicit Cursor(const MergeSide& side)
        : side_(side), listing_(side.listing), count_(side.listing.order.size()) {}

    bool at_end() const { return pos_ >= count_; }
    void advance() { ++pos_; }
    std::int32_t record() const {
        return at_end() ? -1 : static_cast<std::int32_t>(listing_.order[pos_]);
    }
    const ScanRecord& entry() const { return listing_.sorted(pos_); }
    std::string_view name() const { return at_end() ? kEndMarker : listing_.sorted_name(pos_); }
    bool folder() const { return !at_end() && entry().is_folder(); }
    bool excluded(const PathFilters& filters) const {
        if (filters.empty() || at_end()) return false;
        std::string path(side_.root);
        const char separator = fileops::separator_of(side_.root);
        if (!path.empty() && !is_separator(path.back())) path += separator;
        const std::size_t start = path.size();
        path += name();
        if (separator != kSeparator)
            std::replace(path.begin() + start, path.end(), kSeparator, separator);
        return filters.excluded(path);
    }

  private:
    const MergeSide& side_;
    const Listing& listing_;
    std::size_t count_;
    std::size_t pos_ = 0;
};

class Merge {
  public:
    Merge(const MergeSide& source, const MergeSide& target, const PathFilters& filters)
        : s_(source), t_(target), target_(target.listing), filters_(filters) {}

    ActionList run();

  private:
    void add(ActionKind kind, std::int32_t source, std::int32_t target);
    void flush_up_to(std::string_view name);
    void flush_all();
    bool skip_beyond_end(int order);
    void only_in_source();
    void only_in_target();
    void in_both();

    Cursor s_;
    Cursor t_;
    const Listing& target_;
    const PathFilters& filters_;
    std::vector<Action> postponed_;
    std::unordered_set<std::string> warned_;
    ActionList out_;
};

ActionList Merge::run() {
    add(ActionKind::Reset, -1, -1);
    for (;;) {
        if (s_.at_end() && t_.at_end()) break;
        const bool skip_source = s_.excluded(filters_);
        const bool skip_target = t_.excluded(filters_);
        if (skip_source) s_.advance();
        if (skip_target) t_.advance();
        if (skip_source || skip_target) continue;
        const int order = compare(s_.name(), t_.name());
        if (skip_beyond_end(order)) continue;
        if (order < 0)
            only_in_source();
        else if (order > 0)
            only_in_target();
        else
            in_both();
    }
    flush_all();
    return std::move(out_);
}

// A real name that meets the other side's end marker sorts at or after it: it is skipped, so
// the merge never acts on the marker itself.
bool Merge::skip_beyond_end(int order) {
    Cursor* real = nullptr;
    if (s_.at_end() && order <= 0) real = &t_;
    if (t_.at_end() && order >= 0) real = &s_;
    if (!real) return false;
    std::string name(real->name());
    if (warned_.insert(name).second) out_.beyond_end.push_back(std::move(name));
    real->advance();
    return true;
}

void Merge::only_in_source() {
    flush_up_to(s_.name());
    if (s_.folder()) {
        add(ActionKind::Md, s_.record(), -1);
    } else {
        add(ActionKind::Copy, s_.record(), -1);
        out_.bytes_written += s_.entry().size;
    }
    s_.advance();
}

void Merge::only_in_target() {
    flush_up_to(t_.name());
    if (t_.folder()) {
        postponed_.push_back({ActionKind::Rd, -1, t_.record()});
    } else {
        add(ActionKind::Del, -1, t_.record());
        out_.bytes_deleted += t_.entry().size;
    }
    t_.advance();
}

void Merge::in_both() {
    flush_up_to(t_.name());
    const ScanRecord& s = s_.entry();
    const ScanRecord& t = t_.entry();
    const bool renamed = last_component(s_.name()) != last_component(t_.name());
    if (s_.folder() && t_.folder()) {
        if (renamed) add(ActionKind::Rendir, s_.record(), t_.record());
    } else if (s_.folder()) {
        add(ActionKind::Del, -1, t_.record());
        out_.bytes_deleted += t.size;
        add(ActionKind::Md, s_.record(), -1);
    } else if (t_.folder()) {
        // The target folder goes in this run; the file comes in the next one.
        postponed_.push_back({ActionKind::Rd, s_.record(), t_.record()});
        postponed_.push_back({ActionKind::Rd, s_.record(), t_.record()});
    } else if (s.size == t.size &&
               std::round(std::fabs(s.date - t.date) * 86400.0) < kSameTimeSeconds) {
        if (s.attributes != t.attributes) add(ActionKind::Attrib, s_.record(), t_.record());
        if (renamed) add(ActionKind::Rename, s_.record(), t_.record());
    } else {
        add(ActionKind::Replace, s_.record(), t_.record());
        out_.bytes_written += s.size;
        out_.bytes_replaced += t.size;
    }
    s_.advance();
    t_.advance();
}

void Merge::add(ActionKind kind, std::int32_t source, std::int32_t target) {
    if (kind == ActionKind::Reset) out_.actions.clear();
    out_.actions.push_back({kind, source, target});
}

// Adds the postponed removals of the folders that `name` no longer lies in (or before).
void Merge::flush_up_to(std::string_view name) {
    while (!postponed_.empty()) {
        const std::string_view folder = target_.name(postponed_.back().target);
        const std::size_t cut = text::byte_offset_of_char(name, text::char_count(folder));
        if (compare(name.substr(0, cut), folder) <= 0) return;
        out_.actions.push_back(postponed_.back());
        postponed_.pop_back();
    }
}

void Merge::flush_all() {
    for (auto it = postponed_.rbegin(); it != postponed_.rend(); ++it) out_.actions.push_back(*it);
    postponed_.clear();
}

}  // namespace

std::string_view kind_name(ActionKind kind) {
    return kKindNames[static_cast<int>(kind)];
}

std::int64_t ActionList::count(ActionKind kind) const {
    std::int64_t n = 0;
    for (const Action& a : actions) n += a.kind == kind;
    return n;
}

std::string_view last_component(std::string_view name) {
    for (std::size_t i = name.size(); i > 0; --i)
        if (is_separator(name[i - 1])) return name.substr(i);
    const std::size_t colon = name.rfind(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

ActionList compute_actions(const MergeSide& source, const MergeSide& target,
                           const PathFilters& filters) {
    return Merge(source, target, filters).run();
}

}  // namespace quiller::sync
