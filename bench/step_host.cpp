// A host process that imports a STEP file and says how many seconds that took, and in bytes: its
// own most memory, the model's, the segment's, and the translator's most memory.

#include "step_host.h"

#include "peak_memory.h"

#include <keld-transl/model/pool.h>

#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <sys/resource.h>

namespace {

/// What the allocator has given out.
double liveBytes()
{
    struct mallinfo2 const info = ::mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

} // namespace

int main(int count, char ** arguments)
{
    if (count != 2)
        return 2;
    double const before = liveBytes();
    bench::StepHost host;
    auto const start = std::chrono::steady_clock::now();
    bool const isRead = host.read(arguments[1], 1);
    auto const end = std::chrono::steady_clock::now();
    double const model = liveBytes() - before;
    double const peak = bench::peakMemory();
    auto const segment = isRead ? transl_tk::Pool::getInstance()->getSize() : 0;
    rusage translator{};
    ::getrusage(RUSAGE_CHILDREN, &translator);
    std::printf("%.6f %.0f %.0f %lld %.0f\n", std::chrono::duration<double>(end - start).count(),
                peak, model, static_cast<long long>(segment),
                1024.0 * static_cast<double>(translator.ru_maxrss));
    return isRead ? 0 : 1;
}
