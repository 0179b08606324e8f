#ifndef KELD_BENCH_STOPWATCH_H
#define KELD_BENCH_STOPWATCH_H

#include <benchmark/benchmark.h>
#include <chrono>

namespace bench {

/// Runs `work` as the timed part of one iteration; what stands around it in the loop is not timed.
template <class Work> void timed(benchmark::State & state, Work && work)
{
    auto const start = std::chrono::steady_clock::now();
    work();
    auto const end = std::chrono::steady_clock::now();
    state.SetIterationTime(std::chrono::duration<double>(end - start).count());
}

} // namespace bench

#endif
