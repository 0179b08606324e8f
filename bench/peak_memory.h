#ifndef KELD_BENCH_PEAK_MEMORY_H
#define KELD_BENCH_PEAK_MEMORY_H

#include <fstream>
#include <string>

namespace bench {

/// Highest resident size of this process so far, in bytes.
inline double peakMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:") {
            double kibibytes = 0;
            status >> kibibytes;
            return kibibytes * 1024;
        }
    return 0;
}

} // namespace bench

#endif
