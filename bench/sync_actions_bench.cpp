// The merge of two sorted listings of 1,000,000 entries (1,000 folders of 1,000 files): the same
// tree twice (a mirror with nothing to do), and a tree against a copy in which one file in a
// hundred changed, one in a thousand is new and one in a thousand is gone.
#include <benchmark/benchmark.h>

#include "sync/actions.hpp"
#include "tree_listing.hpp"

namespace quiller::sync {
namespace {

using bench::FileEdit;

// `variant` 0: the tree as it is; 1: the changed copy.
Listing make_tree(int variant) {
    return bench::tree_listing([variant](int k) {
        if (!variant) return FileEdit::None;
        return k % 1000 == 7   ? FileEdit::Gone
               : k % 1000 == 9 ? FileEdit::Renamed
               : k % 100 == 3  ? FileEdit::Changed
                               : FileEdit::None;
    });
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
