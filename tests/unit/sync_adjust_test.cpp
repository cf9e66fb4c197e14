// The three-way adjustment of a master tree: every row of its table, folders, a case-only
// rename, conflict names, exclusions and the removals that are not allowed.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "reference_table.hpp"
#include "sync/adjust.hpp"
#include "sync_entries.hpp"

namespace quiller::sync {
namespace {

using namespace text_listings;

constexpr char kSep = kSeparator;

// A listing whose names have "/" as the separator (a last "/" still marks a folder).
Listing native_listing(std::vector<Entry> entries) {
    for (Entry& e : entries) std::replace(e.name.begin(), e.name.end() - 1, '/', kSep);
    return listing(entries);
}

constexpr const char* kKinds[] = {"md", "copy", "replace", "restore", "conflict", "del", "rd"};

// "kind name" per step, "; " between; the conflicts count at the end as "[n]" when not 0.
std::string adjust(const std::vector<Entry>& master, const std::vector<Entry>& copy,
                   const std::vector<Entry>& base, const PathFilters& filters = {},
                   bool removals = true, AdjustPlan* out = nullptr) {
    const Listing m = native_listing(master), c = native_listing(copy), b = native_listing(base);
    AdjustPlan plan = plan_adjustment({{m, "/m"}, {c, "/c"}, b, filters, "Server", removals});
    std::string text;
    for (const AdjustStep& s : plan.steps) {
        if (!text.empty()) text += "; ";
        text += std::string(kKinds[static_cast<int>(s.kind)]) + " " + s.name;
    }
    std::replace(text.begin(), text.end(), kSep, '/');
    if (plan.conflicts) text += " [" + std::to_string(plan.conflicts) + "]";
    if (out) *out = std::move(plan);
    return text;
}

// Every row of the adjustment's table and the folders' rules: cases/sync_adjust.tsv.
TEST(SyncAdjust, EveryRowOfTheTable) {
    test::check_case_table("sync_adjust.tsv", {{"adjust", [](const test::Cells& a) {
                                                    return adjust(entries(a[0]), entries(a[1]),
                                                                  entries(a[2]));
                                                }}});
}

TEST(SyncAdjust, ConflictNamesAreNumberedWhenTaken) {
    EXPECT_EQ(conflict_name("a.tar.gz", "L", 1), "a.tar (L).gz");
    EXPECT_EQ(conflict_name(".profile", "L", 1), ".profile (L)");
    EXPECT_EQ(conflict_name(std::string("d.x") + kSep + "read me", "L", 3),
              std::string("d.x") + kSep + "read me (L 3)");
    EXPECT_EQ(adjust({{"a.txt", 2}, {"a (server).txt", 1}}, {{"a.txt", 3}, {"a (Server).txt", 1}},
                     {{"a.txt", 1}, {"a (Server).txt", 1}}),
              "conflict a (Server 2).txt [1]");
}

TEST(SyncAdjust, ExcludedNamesAndHeldRemovals) {
    PathFilters filters;
    filters.add(std::string(1, kSep) + "skip", false);
    EXPECT_EQ(adjust({{"skip", 1}, {"d/"}, {"d/skip", 1}}, {{"skip", 2}, {"new/"}, {"new/skip", 1}},
                     {{"skip", 1}, {"d/"}, {"d/skip", 1}}, filters),
              "md new");
    AdjustPlan plan;
    EXPECT_EQ(adjust({{"a", 1}, {"d/"}}, {{"b", 1}}, {{"a", 1}, {"d/"}}, {}, false, &plan),
              "copy b");
    EXPECT_EQ(plan.removals_held, 2);
    EXPECT_EQ(plan.bytes_written, 1);
}

// Random edits on both sides of a synchronised pair, then the adjustment and a mirror of the
// master onto the copy (in memory): no edit of either side is lost, and every folder the
// adjustment removes is empty by then.
namespace random_pairs {

struct File {
    std::int64_t size;
    double seconds;
    int content;
};
struct Tree {
    std::map<std::string, File> files;
    std::set<std::string> folders;
};

Listing listing_of(const Tree& t) {
    std::vector<Entry> entries;
    for (const std::string& f : t.folders) entries.push_back({f + "/"});
    for (const auto& [name, f] : t.files) entries.push_back({name, f.size, f.seconds});
    return native_listing(entries);
}

std::string folder_of(const std::string& name) {
    const std::size_t cut = name.rfind('/');
    return cut == std::string::npos ? std::string() : name.substr(0, cut);
}

struct Editor {
    std::mt19937 random;
    int next = 1;
    File fresh() {
        ++next;
        return {static_cast<std::int64_t>(random() % 1000), next * 10.0, next};
    }
    // Changes, removes and adds files and removes folders; the contents it wrote.
    std::set<int> edit(Tree& t) {
        std::set<int> written;
        for (auto it = t.files.begin(); it != t.files.end();) {
            const unsigned dice = random() % 10;
            if (dice == 0) {
                it = t.files.erase(it);
                continue;
            }
            if (dice == 1) written.insert((it->second = fresh()).content);
            ++it;
        }
        for (int k = 0; k < 3; ++k) {
            const std::string folder = "d" + std::to_string(random() % 4);
            const std::string name =
                (random() % 2 ? folder + "/" : "") + "n" + std::to_string(random() % 6);
            if (name.find('/') != std::string::npos) t.folders.insert(folder);
            written.insert((t.files[name] = fresh()).content);
        }
        if (random() % 4 == 0) {
            const std::string folder = "d" + std::to_string(random() % 4);
            std::erase_if(t.files, [&](const auto& f) { return folder_of(f.first) == folder; });
            t.folders.erase(folder);
        }
        std::set<int> standing;  // an edit the side itself overwrote or removed is not kept
        for (const auto& f : t.files)
            if (written.contains(f.second.content)) standing.insert(f.second.content);
        return standing;
    }
};

TEST(SyncAdjust, RandomEditsOnBothSidesAreNeverLost) {
    Editor editor{std::mt19937(20261123)};
    for (int round = 0; round < 300; ++round) {
        Tree base;
        for (int k = 0; k < 8; ++k) {
            const std::string folder = "d" + std::to_string(k % 3);
            base.folders.insert(folder);
            base.files[(k % 2 ? folder + "/" : "") + "f" + std::to_string(k)] = editor.fresh();
        }
        Tree master = base, copy = base;
        const std::set<int> master_edits = editor.edit(master), copy_edits = editor.edit(copy);
        const Listing m = listing_of(master), c = listing_of(copy), b = listing_of(base);
        const AdjustPlan plan = plan_adjustment({{m, "/m"}, {c, "/c"}, b, {}, "C", true});
        for (const AdjustStep& s : plan.steps) {
            std::string name = s.name;
            std::replace(name.begin(), name.end(), kSep, '/');
            if (s.kind == AdjustKind::Md) {
                ASSERT_TRUE(master.folders.insert(name).second) << name;
            } else if (s.kind == AdjustKind::Rd) {
                for (const auto& f : master.files) ASSERT_NE(folder_of(f.first), name);
                master.folders.erase(name);
            } else if (s.kind == AdjustKind::Del) {
                ASSERT_EQ(master.files.erase(name), 1u) << name;
            } else {
                const std::string folder = folder_of(name);
                ASSERT_TRUE(folder.empty() || master.folders.contains(folder)) << name;
                std::string from(c.name(s.copy));
                std::replace(from.begin(), from.end(), kSep, '/');
                master.files[name] = copy.files.at(from);
            }
        }
        std::set<int> kept;
        for (const auto& f : master.files) kept.insert(f.second.content);
        for (const int edit : master_edits) EXPECT_TRUE(kept.contains(edit)) << "round " << round;
        for (const int edit : copy_edits) EXPECT_TRUE(kept.contains(edit)) << "round " << round;
    }
}

}  // namespace random_pairs

}  // namespace
}  // namespace quiller::sync
