// Micro benchmarks of the text helpers that every statement goes through.
#include <benchmark/benchmark.h>

#include <string>

#include "value/text.hpp"

namespace {

void BM_ToLowerAscii(benchmark::State& state) {
    const std::string line = "Print \"Copying C:\\Data\\Reports to D:\\Backup\\Reports\" {Quiet}";
    for (auto _ : state) benchmark::DoNotOptimize(quiller::text::to_lower(line));
}
BENCHMARK(BM_ToLowerAscii);

void BM_ToLowerUnicode(benchmark::State& state) {
    const std::string line = "Größenänderung für Ärger und Übermut";
    for (auto _ : state) benchmark::DoNotOptimize(quiller::text::to_lower(line));
}
BENCHMARK(BM_ToLowerUnicode);

void BM_IEqualsKeyword(benchmark::State& state) {
    const std::string a = "EndWhile";
    const std::string b = "endwhile";
    for (auto _ : state) benchmark::DoNotOptimize(quiller::text::iequals(a, b));
}
BENCHMARK(BM_IEqualsKeyword);

}  // namespace
