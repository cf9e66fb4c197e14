// The three-way adjustment of a master tree: every row of its table, folders, a case-only
// rename, conflict names, exclusions and the removals that are not allowed.
#include <gtest/gtest.h>

#include <algorithm>

#include "sync/adjust.hpp"
#include "sync/sort.hpp"

namespace quiller::sync {
namespace {

constexpr double kDay = 46000;
#ifdef _WIN32
constexpr char kSep = '\\';
#else
constexpr char kSep = '/';
#endif

// "name size seconds"; a name ending in "/" is a folder. "/" inside names is the separator.
struct Entry {
    std::string name;
    std::int64_t size = 0;
    double seconds = 0;
};

std::string native(std::string name) {
    std::replace(name.begin(), name.end(), '/', kSep);
    return name;
}

Listing listing(const std::vector<Entry>& entries) {
    Listing l;
    for (const Entry& e : entries) {
        const bool folder = e.name.back() == '/';
        l.add(native(folder ? e.name.substr(0, e.name.size() - 1) : e.name),
              kDay + e.seconds / 86400, folder ? std::int16_t{kDirectory} : std::int16_t{kArchive},
              folder ? 0 : e.size);
    }
    sort_listing(l);
    return l;
}

constexpr const char* kKinds[] = {"md", "copy", "replace", "restore", "conflict", "del", "rd"};

// "kind name" per step, "; " between; the conflicts count at the end as "[n]" when not 0.
std::string adjust(const std::vector<Entry>& master, const std::vector<Entry>& copy,
                   const std::vector<Entry>& base, const PathFilters& filters = {},
                   bool removals = true, AdjustPlan* out = nullptr) {
    const Listing m = listing(master), c = listing(copy), b = listing(base);
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

TEST(SyncAdjust, EveryRowOfTheTable) {
    const struct {
        std::vector<Entry> master, copy, base;
        const char* steps;
    } cases[] = {
        // copy changed or added, master unchanged or absent in both
        {{{"a", 1}}, {{"a", 2}}, {{"a", 1}}, "replace a"},
        {{{"a", 1, 0}}, {{"a", 1, 60}}, {{"a", 1, 0}}, "replace a"},
        {{}, {{"n", 3}}, {}, "copy n"},
        // times less than 5 seconds apart are the same
        {{{"a", 1, 0}}, {{"a", 1, 4}}, {{"a", 1, 0}}, ""},
        // copy removed, master unchanged
        {{{"a", 1}}, {}, {{"a", 1}}, "del a"},
        // both changed, now equal; both added equal
        {{{"a", 2}}, {{"a", 2}}, {{"a", 1}}, ""},
        {{{"n", 2}}, {{"n", 2}}, {}, ""},
        // both changed differently, or both added differently: a conflict
        {{{"a.txt", 2}}, {{"a.txt", 3}}, {{"a.txt", 1}}, "conflict a (Server).txt [1]"},
        {{{"n", 2}}, {{"n", 3}}, {}, "conflict n (Server) [1]"},
        // copy changed, master removed: the change wins
        {{}, {{"a", 2}}, {{"a", 1}}, "restore a"},
        // copy unchanged: nothing, whatever the master did
        {{{"a", 2}}, {{"a", 1}}, {{"a", 1}}, ""},
        {{}, {{"a", 1}}, {{"a", 1}}, ""},
        {{{"a", 1}, {"n", 1}}, {{"a", 1}}, {{"a", 1}}, ""},
        // master changed, copy removed: the change wins
        {{{"a", 2}}, {}, {{"a", 1}}, ""},
        // removed on both sides
        {{}, {}, {{"a", 1}}, ""},
        // a name only changed in case in the copy is the same name
        {{{"Report", 1}}, {{"report", 1}}, {{"Report", 1}}, ""},
        {{{"Report", 1}}, {{"REPORT", 2}}, {{"report", 1}}, "replace Report"},
    };
    for (const auto& c : cases) EXPECT_EQ(adjust(c.master, c.copy, c.base), c.steps) << c.steps;
}

TEST(SyncAdjust, Folders) {
    const struct {
        std::vector<Entry> master, copy, base;
        const char* steps;
    } cases[] = {
        // a new folder with files: the folders first, outermost first
        {{}, {{"d/"}, {"d/e/"}, {"d/e/f", 1}}, {}, "md d; md d/e; copy d/e/f"},
        // restored into a folder the master removed
        {{}, {{"d/"}, {"d/f", 2}}, {{"d/"}, {"d/f", 1}}, "md d; restore d/f"},
        // removed: contents first, innermost folder first
        {{{"d/"}, {"d/e/"}, {"d/e/f", 1}, {"d/g", 1}},
         {},
         {{"d/"}, {"d/e/"}, {"d/e/f", 1}, {"d/g", 1}},
         "del d/e/f; del d/g; rd d/e; rd d"},
        // a folder removed in the copy stays while the master changed something in it
        {{{"d/"}, {"d/e/"}, {"d/e/f", 2}, {"d/g", 1}},
         {},
         {{"d/"}, {"d/e/"}, {"d/e/f", 1}, {"d/g", 1}},
         "del d/g"},
        {{{"d/"}, {"d/new", 1}}, {}, {{"d/"}}, ""},
        // a folder of the copy where the master has a file: beside it, with what it holds
        {{{"x", 2}}, {{"x/"}, {"x/f", 1}}, {{"x", 1}}, "md x (Server); copy x (Server)/f [1]"},
        // a file of the copy where the master made a folder
        {{{"x/"}}, {{"x", 5}}, {}, "conflict x (Server) [1]"},
    };
    for (const auto& c : cases) EXPECT_EQ(adjust(c.master, c.copy, c.base), c.steps) << c.steps;
}

TEST(SyncAdjust, ConflictNamesAreNumberedWhenTaken) {
    EXPECT_EQ(conflict_name("a.tar.gz", "L", 1), "a.tar (L).gz");
    EXPECT_EQ(conflict_name(".profile", "L", 1), ".profile (L)");
    EXPECT_EQ(conflict_name(native("d.x/read me"), "L", 3), native("d.x/read me (L 3)"));
    EXPECT_EQ(adjust({{"a.txt", 2}, {"a (server).txt", 1}}, {{"a.txt", 3}, {"a (Server).txt", 1}},
                     {{"a.txt", 1}, {"a (Server).txt", 1}}),
              "conflict a (Server 2).txt [1]");
}

TEST(SyncAdjust, ExcludedNamesAndHeldRemovals) {
    PathFilters filters;
    filters.add("/skip", false);
    EXPECT_EQ(adjust({{"skip", 1}, {"d/"}, {"d/skip", 1}}, {{"skip", 2}, {"new/"}, {"new/skip", 1}},
                     {{"skip", 1}, {"d/"}, {"d/skip", 1}}, filters),
              "md new");
    AdjustPlan plan;
    EXPECT_EQ(adjust({{"a", 1}, {"d/"}}, {{"b", 1}}, {{"a", 1}, {"d/"}}, {}, false, &plan),
              "copy b");
    EXPECT_EQ(plan.removals_held, 2);
    EXPECT_EQ(plan.bytes_written, 1);
}

}  // namespace
}  // namespace quiller::sync
