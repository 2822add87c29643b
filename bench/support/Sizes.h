#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

namespace glimmerly {

/// Displays 1080 and 2160 pixels high, and of twenty rounds the shortest.
inline void sizes(benchmark::internal::Benchmark* bench) {
    const auto least = [](const std::vector<double>& times) { return std::ranges::min(times); };
    bench->Arg(1080)->Arg(2160)->ArgName("height")->Unit(benchmark::kMillisecond);
    bench->UseRealTime()->MeasureProcessCPUTime();
    bench->Iterations(1)->Repetitions(20)->ReportAggregatesOnly()->ComputeStatistics("min", least);
}

} // namespace glimmerly
