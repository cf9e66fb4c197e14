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

using Index = std::unordered_map<std::string, std::uint32_t>;

class Planner {
  public:
    explicit Planner(const AdjustInput& in) : in_(in), m_(in.master.listing), c_(in.copy.listing) {
        index(in.master, m_index_, &excluded_in_master_);
        index(in.copy, c_index_, nullptr);
        for (std::uint32_t r = 0; r < in.base.size(); ++r) {
            const std::string_view name = in.base.name(r);
            if (!excluded(name)) b_index_.emplace(fold_name(name), r);
        }
    }

    AdjustPlan run() {
        for (const std::uint32_t r : c_.order) {
            const std::string key = fold_name(c_.name(r));
            if (!c_index_.contains(key)) continue;  // excluded
            decide(key, static_cast<std::int32_t>(r));
        }
        for (const std::uint32_t r : m_.order) {
            std::string key = fold_name(m_.name(r));
            if (!c_index_.contains(key) && m_index_.contains(key)) decide(key, -1);
        }
        return finish();
    }

  private:
    bool excluded(std::string_view name) const {
        return !in_.filters.empty() && (in_.filters.excluded(join_path(in_.master.root, name)) ||
                                        in_.filters.excluded(join_path(in_.copy.root, name)));
    }

    void index(const MergeSide& side, Index& out, std::vector<std::string>* left_out) {
        out.reserve(side.listing.size());
        for (std::uint32_t r = 0; r < side.listing.size(); ++r) {
            const std::string_view name = side.listing.name(r);
            if (!excluded(name))
                out.emplace(fold_name(name), r);
            else if (left_out)
                left_out->push_back(fold_name(name));
        }
    }

    static const ScanRecord* find(const Listing& l, const Index& index, const std::string& key,
                                  std::int32_t* number = nullptr) {
        const auto it = index.find(key);
        if (it == index.end()) return nullptr;
        if (number) *number = static_cast<std::int32_t>(it->second);
        return &l.record(it->second);
    }

    static Change change(const ScanRecord* base, const ScanRecord* now) {
        if (!base) return now ? Change::Added : Change::Absent;
        if (!now) return Change::Removed;
        return same_entry(*base, *now) ? Change::Unchanged : Change::Changed;
    }

    static bool changed(Change c) { return c == Change::Added || c == Change::Changed; }

    // The name beside its master entry of a folder of the copy above `key`, with the
    // components of `name` below that folder; empty when no folder above was moved. The copy's
    // listing is in name order, so a folder is decided before what it holds.
    std::string moved_name(std::string_view key, std::string_view name) const {
        if (moved_.empty()) return {};
        for (std::string_view up = parent_of(key); !up.empty(); up = parent_of(up)) {
            const auto it = moved_.find(std::string(up));
            if (it == moved_.end()) continue;
            std::size_t cut = 0;
            for (std::size_t k = depth(up) + 1; k > 0; --k) cut = name.find(kSeparator, cut + 1);
            return it->second + std::string(name.substr(cut));
        }
        return {};
    }

    void decide(const std::string& key, std::int32_t c_number) {
        std::int32_t m_number = -1;
        const ScanRecord* m = find(m_, m_index_, key, &m_number);
        const ScanRecord* c = c_number < 0 ? nullptr : &c_.record(c_number);
        const ScanRecord* b = find(in_.base, b_index_, key);
        const Change cs = change(b, c), ms = change(b, m);
        bool master_stays = m != nullptr;
        std::string moved = c ? moved_name(key, c_.name(c_number)) : std::string();
        if (!moved.empty()) {
            write(c->is_folder() ? AdjustKind::Md : AdjustKind::Copy, c_number, -1,
                  std::move(moved));
        } else if (changed(cs)) {
            if (!m && ms == Change::Removed) {
                write(c->is_folder() ? AdjustKind::Md : AdjustKind::Restore, c_number, -1,
                      std::string(c_.name(c_number)));
            } else if (!m) {
                write(c->is_folder() ? AdjustKind::Md : AdjustKind::Copy, c_number, -1,
                      std::string(c_.name(c_number)));
            } else if (m->is_folder() != c->is_folder() || (changed(ms) && !same_entry(*m, *c))) {
                conflict(key, c_number, m_number);
            } else if (ms == Change::Unchanged && !c->is_folder()) {
                write(AdjustKind::Replace, c_number, m_number, std::string(m_.name(m_number)));
                plan_.bytes_replaced += m->size;
            }
        } else if (cs == Change::Removed && ms == Change::Unchanged) {
            if (!in_.removals) {
                ++plan_.removals_held;
            } else if (m->is_folder()) {
                rd_candidates_.push_back(
                    {AdjustKind::Rd, -1, m_number, std::string(m_.name(m_number))});
                master_stays = false;
            } else {
                removals_.push_back(
                    {AdjustKind::Del, -1, m_number, std::string(m_.name(m_number))});
                master_stays = false;
            }
        }
        if (master_stays) kept_.push_back(key);
    }

    void conflict(const std::string& key, std::int32_t c_number, std::int32_t m_number) {
        ++plan_.conflicts;
        const std::string_view c_name = c_.name(c_number);
        std::string name;
        for (int n = 1;; ++n) {
            name = conflict_name(c_name, in_.label, n);
            const std::string folded = fold_name(name);
            if (!m_index_.contains(folded) && !c_index_.contains(folded) &&
                !taken_.contains(folded))
                break;
        }
        if (c_.record(c_number).is_folder()) {
            moved_[key] = name;
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
            const std::string key = fold_name(up);
            const ScanRecord* m = find(m_, m_index_, key);
            if ((m && m->is_folder()) || made_.contains(key)) return;
            made_.insert(key);
            folders_.push_back({AdjustKind::Md, c_number, -1, std::string(up)});
        }
    }

    AdjustPlan finish() {
        // A folder removed in the copy stays while anything below it stays in the master.
        std::unordered_set<std::string> holding;
        for (std::vector<std::string>* kept : {&kept_, &excluded_in_master_})
            for (const std::string& key : *kept)
                for (std::string_view up = parent_of(key); !up.empty(); up = parent_of(up))
                    if (!holding.insert(std::string(up)).second) break;
        for (AdjustStep& s : rd_candidates_)
            if (!holding.contains(fold_name(s.name))) removals_.push_back(std::move(s));
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
    Index m_index_, c_index_, b_index_;
    std::unordered_map<std::string, std::string> moved_;  // copy's folder key -> name beside
    std::unordered_set<std::string> made_;                // folded names of folders made
    std::unordered_set<std::string> taken_;               // folded names written
    std::vector<std::string> kept_, excluded_in_master_;  // keys of master entries that stay
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
