// The three-way adjustment over listings of 1,000,000 entries (1,000 folders of 1,000 files):
// the base, the master with 500 files changed, and the copy with 500 other files changed, 250 new
// and 250 gone.
#include <benchmark/benchmark.h>

#include "sync/adjust.hpp"
#include "tree_listing.hpp"

namespace quiller::sync {
namespace {

using bench::FileEdit;

// 0: the base; 1: the master; 2: the copy.
Listing make_tree(int side) {
    return bench::tree_listing([side](int k) {
        if (side == 1) return k % 2000 == 3 ? FileEdit::Changed : FileEdit::None;
        if (side == 0) return FileEdit::None;
        return k % 4000 == 7   ? FileEdit::Gone
               : k % 4000 == 9 ? FileEdit::Renamed
               : k % 2000 == 5 ? FileEdit::Changed
                               : FileEdit::None;
    });
}

void adjust(benchmark::State& state) {
    static const Listing base = make_tree(0), master = make_tree(1), copy = make_tree(2);
    const PathFilters filters;
    std::size_t steps = 0;
    for (auto _ : state) {
        const AdjustPlan plan =
            plan_adjustment({{master, "/m"}, {copy, "/c"}, base, filters, "Copy", true});
        steps = plan.steps.size();
        benchmark::DoNotOptimize(steps);
    }
    state.counters["steps"] = static_cast<double>(steps);
}
BENCHMARK(adjust)->Name("SyncAdjust/1000000")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quiller::sync
