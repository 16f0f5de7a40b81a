// Times for benchmarks that give ratios.
#pragma once

#include <chrono>

namespace korvex::bench {

/// How long `work` takes.
template <class Work>
double secondsOf(Work work) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace korvex::bench
