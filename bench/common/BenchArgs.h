#pragma once

// The arguments of the benchmarks that work on an open grid: the size (about
// 10,000 or 50,000 codes), then 0 when only the top codes and the worked-on level
// are shown, 1 when every row is (at 50,000 only every row).
#include "BenchProject.h"

#include <benchmark/benchmark.h>

inline void SizesAndShown(benchmark::internal::Benchmark* b)
{
    b->Args({ kBenchSmall, 0 })->Args({ kBenchSmall, 1 })->Args({ kBenchLarge, 1 });
}
