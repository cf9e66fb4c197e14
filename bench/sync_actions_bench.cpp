// The merge of two sorted listings of 1,000,000 entries (1,000 folders of 1,000 files): the same
// tree twice (a mirror with nothing to do), and a tree against a copy in which one file in a
// hundred changed, one in a thousand is new and one in a thousand is gone.
#include <benchmark/benchmark.h>

#include <cstdio>

#include "sync/actions.hpp"
#include "sync/sort.hpp"

namespace quiller::sync {
namespace {

constexpr int kFolders = 1000, kFiles = 1000;

// `variant` 0: the tree as it is; 1: the changed copy.
Listing make_tree(int variant) {
    Listing l;
    l.reserve(kFolders * (kFiles + 1), kFolders * (kFiles + 1) * 22);
    char name[64];
    for (int d = 0; d < kFolders; ++d) {
        std::snprintf(name, sizeof name, "folder%04d", d);
        l.add(name, 45000, kAttrDirectory, 0);
        for (int f = 0; f < kFiles; ++f) {
            const int k = d * kFiles + f;
            if (variant && k % 1000 == 7) continue;  // gone
            std::snprintf(name, sizeof name, "folder%04d/file%04d.dat", d,
                          variant && k % 1000 == 9 ? f + 5000 : f);
            l.add(name, 45000.5, kAttrArchive, variant && k % 100 == 3 ? 4096 : 2048);
        }
    }
    sort_listing(l);
    return l;
}

const Listing& tree(int variant) {
    static const Listing trees[2] = {make_tree(0), make_tree(1)};
    return trees[variant];
}

void merge(benchmark::State& state) {
    const Listing& source = tree(0);
    const Listing& target = tree(static_cast<int>(state.range(0)));
    const PathFilters filters;
    std::size_t actions = 0;
    for (auto _ : state) {
        const ActionList list = compute_actions({source, "/src"}, {target, "/dst"}, filters);
        actions = list.actions.size();
        benchmark::DoNotOptimize(actions);
    }
    state.counters["actions"] = static_cast<double>(actions);
}
BENCHMARK(merge)->Name("SyncActions/identical")->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(merge)->Name("SyncActions/changed")->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quiller::sync
