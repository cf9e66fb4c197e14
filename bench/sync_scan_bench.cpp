// Sorting 1,000,000 names and reading a 1,000,000-line scan file (bench/sync.sh prints them
// beside `sort -f` and awk). Names as a walk of 1,000 folders of 1,000 files gives them.
#include <benchmark/benchmark.h>

#include <string>

#include "sync/listing.hpp"
#include "sync/scan_file.hpp"
#include "sync/sort.hpp"

namespace {

using quiller::sync::Listing;

Listing million_names() {
    Listing l;
    l.reserve(1001000, 30000000);
    for (int d = 0; d < 1000; ++d) {
        const std::string folder = "Folder" + std::to_string(1000 + d);
        l.add(folder, 45000.5, 16, 0);
        for (int f = 999; f >= 0; --f)  // not in name order
            l.add(folder + quiller::sync::kSeparator + "file_" + std::to_string(f * 7919 % 1000) +
                      ".Dat",
                  45000.25 + f / 86400.0, 32, f * 100);
    }
    return l;
}

void SyncSortMillionNames(benchmark::State& state) {
    Listing l = million_names();
    for (auto _ : state) {
        quiller::sync::sort_listing(l);
        benchmark::DoNotOptimize(l.order.data());
    }
}
BENCHMARK(SyncSortMillionNames)->Unit(benchmark::kMillisecond)->Iterations(3);

void SyncReadMillionLineScanFile(benchmark::State& state) {
    Listing l = million_names();
    quiller::sync::sort_listing(l);
    const std::string text = quiller::sync::scan_file_text(l);
    const quiller::sync::ScanFileEvents events{[](const std::string&) {}, nullptr};
    for (auto _ : state) {
        Listing back;
        quiller::sync::parse_scan_file("bench.scn", text, events, back);
        benchmark::DoNotOptimize(back.order.data());
    }
}
BENCHMARK(SyncReadMillionLineScanFile)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
