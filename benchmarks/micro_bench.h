// Small work that Google Benchmark measures.
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace zorvanelink::bench {

// Seconds of one call on the wall clock: the median of some rounds, each of as many calls as take
// it long enough. What the call returns counts as used.
template <class Work>
double SecondsPerCall(Work&& work) {
    struct Median : benchmark::BenchmarkReporter {
        bool ReportContext(Context const&) override { return true; }
        void ReportRuns(std::vector<Run> const& runs) override {
            for (Run const& run : runs) {
                if (run.aggregate_name == "median") {
                    seconds = run.GetAdjustedRealTime();
                }
            }
        }
        double seconds = 0;
    } median;
    benchmark::RegisterBenchmark("work",
                                 [&work](benchmark::State& state) {
                                     for ([[maybe_unused]] auto const round : state) {
                                         benchmark::DoNotOptimize(work());
                                     }
                                 })
        ->Unit(benchmark::kSecond)
        ->UseRealTime()
        ->MinTime(0.1)
        ->Repetitions(5);
    benchmark::RunSpecifiedBenchmarks(&median);
    benchmark::ClearRegisteredBenchmarks();
    return median.seconds;
}

}  // namespace zorvanelink::bench
