// The three-way adjustment over listings of 1,000,000 entries (1,000 folders of 1,000 files):
// the base, the master with 500 files changed, and the copy with 500 other files changed, 250 new
// and 250 gone.
#include <benchmark/benchmark.h>

#include <cstdio>

#include "sync/adjust.hpp"
#include "sync/sort.hpp"

namespace quiller::sync {
namespace {

constexpr int kFolders = 1000, kFiles = 1000;

// 0: the base; 1: the master; 2: the copy.
Listing make_tree(int side) {
    Listing l;
    l.reserve(kFolders * (kFiles + 1), kFolders * (kFiles + 1) * 22);
    char name[64];
    for (int d = 0; d < kFolders; ++d) {
        std::snprintf(name, sizeof name, "folder%04d", d);
        l.add(name, 45000, kAttrDirectory, 0);
        for (int f = 0; f < kFiles; ++f) {
            const int k = d * kFiles + f;
            const bool changed = (side == 1 && k % 2000 == 3) || (side == 2 && k % 2000 == 5);
            if (side == 2 && k % 4000 == 7) continue;  // gone
            std::snprintf(name, sizeof name, "folder%04d/file%04d.dat", d,
                          side == 2 && k % 4000 == 9 ? f + 5000 : f);
            l.add(name, 45000.5, kAttrArchive, changed ? 4096 : 2048);
        }
    }
    sort_listing(l);
    return l;
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
