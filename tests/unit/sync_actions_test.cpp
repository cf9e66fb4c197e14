// The merge of two sorted listings into actions: every case of two entries of one name, nested
// removals, the path filters, the end marker and the disk space.
#include <gtest/gtest.h>

#include "reference_table.hpp"
#include "sync/actions.hpp"
#include "sync_entries.hpp"

namespace quiller::sync {
namespace {

using namespace text_listings;

// "kind source target", "-" for a side without an entry; "reset" is left out.
std::string describe(const ActionList& list, const Listing& s, const Listing& t) {
    std::string out;
    for (const Action& a : list.actions) {
        if (a.kind == ActionKind::Reset) continue;
        if (!out.empty()) out += "; ";
        out += std::string(kind_name(a.kind)) + " " +
               (a.source < 0 ? std::string("-") : std::string(s.name(a.source))) + " " +
               (a.target < 0 ? std::string("-") : std::string(t.name(a.target)));
    }
    return out;
}

std::string merge(const std::vector<Entry>& source, const std::vector<Entry>& target,
                  const PathFilters& filters = {}, ActionList* result = nullptr) {
    const Listing s = listing(source), t = listing(target);
    ActionList list = compute_actions({s, "/data/src"}, {t, "/data/dst"}, filters);
    EXPECT_EQ(list.actions.front().kind, ActionKind::Reset);
    const std::string text = describe(list, s, t);
    if (result) *result = std::move(list);
    return text;
}

// Every case of two entries of one name: cases/sync_actions.tsv.
TEST(SyncActions, OneNameOnEitherSide) {
    test::check_case_table(
        "sync_actions.tsv",
        {{"merge", [](const test::Cells& a) { return merge(entries(a[0]), entries(a[1])); }}});
}

TEST(SyncActions, FiltersApplyToTheSideWhosePathHoldsThePattern) {
    PathFilters filters;
    filters.add("SRC/skip", false);  // the source's path only
    filters.add(".bak", false);
    filters.add("keep", true);
    EXPECT_EQ(
        merge({{"skip", 1}, {"a.bak", 1}, {"keep.bak", 1}}, {{"b.bak", 1}, {"skip", 1}}, filters),
        "copy keep.bak -; del - skip");
    // The end marker is never filtered: excluding "zz" can't stop the merge.
    filters.add("zz", false);
    EXPECT_EQ(merge({{"a", 1}}, {}, filters), "copy a -");
    filters.reset();
    EXPECT_TRUE(filters.empty());
}

TEST(SyncActions, NamesAfterTheEndMarkerAreSkippedOnce) {
    ActionList list;
    const std::string z19(19, 'z');
    // Beside real names they sort as any name does; only the end marker stops them.
    EXPECT_EQ(merge({{z19, 1}}, {{"Ωmega", 1}}, {}, &list), "copy zzzzzzzzzzzzzzzzzzz -");
    EXPECT_EQ(list.beyond_end, std::vector<std::string>{"Ωmega"});
    EXPECT_EQ(merge({{"a", 1}, {z19, 1}, {"Ωmega", 1}}, {{"b", 1}}, {}, &list),
              "copy a -; del - b");
    EXPECT_EQ(list.beyond_end, (std::vector<std::string>{z19, "Ωmega"}));
    EXPECT_EQ(merge({}, {{"zzzzzzzzzzzzzzzzzz", 1}, {"Я", 1}}, {}, &list), "");
    EXPECT_EQ(list.beyond_end.size(), 2u);
}

TEST(SyncActions, DiskSpaceIsTheTargetsGrowth) {
    ActionList list;
    merge({{"a", 100}, {"b", 30, 60}, {"c", 5}}, {{"b", 50}, {"c", 5}, {"d", 7}}, {}, &list);
    EXPECT_EQ(list.space_required(), 100 + 30 - 50 - 7);
    EXPECT_EQ(list.space_required(false), 100 + 30 - 50);
    EXPECT_EQ(list.count(ActionKind::Copy), 1);
}

}  // namespace
}  // namespace quiller::sync
