#ifndef KELD_BENCH_STOPWATCH_H
#define KELD_BENCH_STOPWATCH_H

#include <benchmark/benchmark.h>
#include <chrono>

namespace bench {

/// Takes `seconds` as the time of one iteration. The shortest of them stands beside the mean as
/// "least_ms": on a machine that does other work, too, it is the steadier figure.
inline void setTime(benchmark::State & state, double seconds)
{
    state.SetIterationTime(seconds);
    auto & least = state.counters["least_ms"];
    double const milliseconds = 1000 * seconds;
    if (least.value == 0 || milliseconds < least.value)
        least = milliseconds;
}

/// Runs `work` as the timed part of one iteration; what stands around it in the loop is not timed.
template <class Work> void timed(benchmark::State & state, Work && work)
{
    auto const start = std::chrono::steady_clock::now();
    work();
    auto const end = std::chrono::steady_clock::now();
    setTime(state, std::chrono::duration<double>(end - start).count());
}

} // namespace bench

#endif
