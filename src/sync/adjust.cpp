#include "sync/adjust.hpp"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

#include "sync/executor.hpp"
#include "sync/name_order.hpp"

namespace quiller::sync {
namespace {

constexpr double kSameTimeSeconds = 5;

enum class Change : std::uint8_t { Absent, Unchanged, Added, Removed, Changed };

bool same_entry(const ScanRecord& a, const ScanRecord& b) {
    if (a.is_folder() || b.is_folder()) return a.is_folder() == b.is_folder();
    return a.size == b.size && std::round(std::fabs(a.date - b.date) * 86400.0) < kSameTimeSeconds;
}

std::string_view parent_of(std::string_view name) {
    const std::size_t cut = name.rfind(kSeparator);
    return cut == std::string_view::npos ? std::string_view{} : name.substr(0, cut);
}

std::size_t depth(std::string_view name) {
    return static_cast<std::size_t>(std::count(name.begin(), name.end(), kSeparator));
}

// Names equal ignoring ASCII case compare equal without building keys: most names of three
// listings of one tree are.
int compare(std::string_view a, std::string_view b) {
    if (a.size() == b.size()) {
        std::size_t i = 0;
        for (; i < a.size(); ++i) {
            const unsigned char x = a[i], y = b[i];
            if (x == y) continue;
            if (x >= 0x80 || y >= 0x80 || (x | 0x20) != (y | 0x20) || (x | 0x20) < 'a' ||
                (x | 0x20) > 'z')
                break;
        }
        if (i == a.size()) return 0;
    }
    return compare_names(a, b);
}

// One listing walked in name order.
struct Cursor {
    const Listing& listing;
    std::size_t position = 0;

    bool at_end() const { return position >= listing.order.size(); }
    std::string_view name() const { return listing.sorted_name(position); }
    std::int32_t record() const { return static_cast<std::int32_t>(listing.order[position]); }
};

// The record of `name` in a sorted listing, or -1.
std::int32_t find(const Listing& l, std::string_view name) {
    std::size_t low = 0, high = l.order.size();
    while (low < high) {
        const std::size_t mid = low + (high - low) / 2;
        const int order = compare(l.sorted_name(mid), name);
        if (order == 0) return static_cast<std::int32_t>(l.order[mid]);
        if (order < 0)
            low = mid + 1;
        else
            high = mid;
    }
    return -1;
}

class Planner {
  public:
    explicit Planner(const AdjustInput& in)
        : in_(in), m_(in.master.listing), c_(in.copy.listing), removed_(m_.size(), 0) {}

    // The three listings side by side: each step takes the smallest name and the entries of
    // that name on every side.
    AdjustPlan run() {
        Cursor m{m_}, c{c_}, b{in_.base};
        for (;;) {
            Cursor* first = nullptr;
            for (Cursor* side : {&m, &c, &b})
                if (!side->at_end() && (!first || compare(side->name(), first->name()) < 0))
                    first = side;
            if (!first) break;
            const std::string_view name = first->name();
            std::int32_t records[3] = {-1, -1, -1};
            int k = 0;
            for (Cursor* side : {&m, &c, &b}) {
                if (!side->at_end() && (side == first || compare(side->name(), name) == 0)) {
                    records[k] = side->record();
                    ++side->position;
                }
                ++k;
            }
            if (!excluded(name)) decide(records[0], records[1], records[2]);
        }
        return finish();
    }

  private:
    bool excluded(std::string_view name) const {
        return !in_.filters.empty() && (in_.filters.excluded(join_path(in_.master.root, name)) ||
                                        in_.filters.excluded(join_path(in_.copy.root, name)));
    }

    static Change change(const ScanRecord* base, const ScanRecord* now) {
        if (!base) return now ? Change::Added : Change::Absent;
        if (!now) return Change::Removed;
        return same_entry(*base, *now) ? Change::Unchanged : Change::Changed;
    }

    static bool changed(Change c) { return c == Change::Added || c == Change::Changed; }

    // The name beside the master's entry of a folder of the copy above `name`, with the rest of
    // `name`; empty when no folder above was moved. Folders come before what they hold.
    std::string moved_name(std::string_view name) const {
        if (moved_.empty()) return {};
        for (std::string_view up = parent_of(name); !up.empty(); up = parent_of(up)) {
            const auto it = moved_.find(std::string(up));
            if (it != moved_.end()) return it->second + std::string(name.substr(up.size()));
        }
        return {};
    }

    void decide(std::int32_t m_number, std::int32_t c_number, std::int32_t b_number) {
        const ScanRecord* m = m_number < 0 ? nullptr : &m_.record(m_number);
        const ScanRecord* c = c_number < 0 ? nullptr : &c_.record(c_number);
        const ScanRecord* b = b_number < 0 ? nullptr : &in_.base.record(b_number);
        const Change cs = change(b, c), ms = change(b, m);
        std::string moved = c ? moved_name(c_.name(c_number)) : std::string();
        if (!moved.empty()) {
            write(c->is_folder() ? AdjustKind::Md : AdjustKind::Copy, c_number, -1,
                  std::move(moved));
        } else if (changed(cs)) {
            if (!m) {
                const AdjustKind kind =
                    ms == Change::Removed ? AdjustKind::Restore : AdjustKind::Copy;
                write(c->is_folder() ? AdjustKind::Md : kind, c_number, -1,
                      std::string(c_.name(c_number)));
            } else if (m->is_folder() != c->is_folder() || (changed(ms) && !same_entry(*m, *c))) {
                conflict(c_number, m_number);
            } else if (ms == Change::Unchanged && !c->is_folder()) {
                write(AdjustKind::Replace, c_number, m_number, std::string(m_.name(m_number)));
                plan_.bytes_replaced += m->size;
            }
        } else if (cs == Change::Removed && ms == Change::Unchanged) {
            const std::string name(m_.name(m_number));
            if (!in_.removals)
                ++plan_.removals_held;
            else if (m->is_folder())
                rd_candidates_.push_back({AdjustKind::Rd, -1, m_number, name});
            else
                removals_.push_back({AdjustKind::Del, -1, m_number, name});
            if (in_.removals && !m->is_folder()) removed_[m_number] = 1;
        }
    }

    bool taken(const std::string& name) const {
        return find(m_, name) >= 0 || find(c_, name) >= 0 || taken_.contains(fold_name(name));
    }

    void conflict(std::int32_t c_number, std::int32_t m_number) {
        ++plan_.conflicts;
        const std::string_view c_name = c_.name(c_number);
        std::string name;
        for (int n = 1;; ++n)
            if (!taken(name = conflict_name(c_name, in_.label, n))) break;
        if (c_.record(c_number).is_folder()) {
            moved_[std::string(c_name)] = name;
            write(AdjustKind::Md, c_number, m_number, name);
        } else {
            write(AdjustKind::Conflict, c_number, m_number, name);
        }
    }

    // A write into the master at `name`; its missing folders are made first.
    void write(AdjustKind kind, std::int32_t c_number, std::int32_t m_number, std::string name) {
        std::string folded = fold_name(name);
        if (kind == AdjustKind::Md) {
            if (!made_.insert(folded).second) return;
        } else {
            plan_.bytes_written += c_.record(c_number).size;
        }
        taken_.insert(std::move(folded));
        make_parents(name, c_number);
        (kind == AdjustKind::Md ? folders_ : files_).push_back({kind, c_number, m_number, name});
    }

    void make_parents(std::string_view name, std::int32_t c_number) {
        for (std::string_view up = parent_of(name); !up.empty(); up = parent_of(up)) {
            const std::int32_t m = find(m_, up);
            std::string key = fold_name(up);
            if ((m >= 0 && m_.record(m).is_folder()) || made_.contains(key)) return;
            made_.insert(std::move(key));
            folders_.push_back({AdjustKind::Md, c_number, -1, std::string(up)});
        }
    }

    // A folder removed in the copy stays while anything below it stays in the master: every
    // entry not removed holds the candidates above it (the master's names below a folder begin
    // with the folder's own name).
    void hold_folders() {
        if (rd_candidates_.empty()) return;
        std::unordered_set<std::string_view> candidates, held;
        for (const AdjustStep& s : rd_candidates_) candidates.insert(s.name);
        for (std::uint32_t r = 0; r < m_.size(); ++r) {
            const std::string_view name = m_.name(r);
            if (removed_[r] || candidates.contains(name)) continue;
            for (std::string_view up = parent_of(name); !up.empty(); up = parent_of(up))
                if (candidates.contains(up)) held.insert(up);
        }
        for (AdjustStep& s : rd_candidates_)
            if (!held.contains(s.name)) removals_.push_back(std::move(s));
    }

    AdjustPlan finish() {
        hold_folders();
        const auto by_depth = [](const AdjustStep& a, const AdjustStep& b) {
            return depth(a.name) < depth(b.name);
        };
        std::stable_sort(folders_.begin(), folders_.end(), by_depth);
        std::stable_sort(removals_.begin(), removals_.end(),
                         [&](const AdjustStep& a, const AdjustStep& b) {
                             return (a.kind == AdjustKind::Rd) != (b.kind == AdjustKind::Rd)
                                        ? b.kind == AdjustKind::Rd
                                        : by_depth(b, a);
                         });
        for (auto* part : {&folders_, &files_, &removals_})
            for (AdjustStep& s : *part) plan_.steps.push_back(std::move(s));
        return std::move(plan_);
    }

    const AdjustInput& in_;
    const Listing& m_;
    const Listing& c_;
    std::vector<char> removed_;                           // per master record
    std::unordered_map<std::string, std::string> moved_;  // copy's folder -> name beside
    std::unordered_set<std::string> made_;                // folded names of folders made
    std::unordered_set<std::string> taken_;               // folded names written
    std::vector<AdjustStep> folders_, files_, removals_, rd_candidates_;
    AdjustPlan plan_;
};

}  // namespace

AdjustPlan plan_adjustment(const AdjustInput& input) {
    return Planner(input).run();
}

std::string conflict_name(std::string_view name, std::string_view label, int number) {
    const std::size_t last =
        name.rfind(kSeparator) == std::string_view::npos ? 0 : name.rfind(kSeparator) + 1;
    std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot <= last) dot = name.size();
    std::string out(name.substr(0, dot));
    out += " (";
    out += label;
    if (number > 1) {
        out += ' ';
        out += std::to_string(number);
    }
    out += ")";
    out += name.substr(dot);
    return out;
}

}  // namespace quiller::sync
