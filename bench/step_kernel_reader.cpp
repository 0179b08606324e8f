// A process that reads a STEP file with the kernel and says how many seconds that took and how many
// bytes of memory it had at most.

#include "peak_memory.h"
#include "step_kernel.h"

#include <cstdio>

int main(int count, char ** arguments)
{
    if (count != 2)
        return 2;
    bench::Kernel kernel;
    double const seconds = kernel.read(arguments[1]);
    std::printf("%.6f %.0f\n", seconds, bench::peakMemory());
    return seconds > 0 ? 0 : 1;
}
