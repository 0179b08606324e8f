#ifndef KELD_BENCH_FRESH_PROCESS_H
#define KELD_BENCH_FRESH_PROCESS_H

#include "peak_memory.h"

#include <keld-transl/exchange/shared_mem.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/process/server.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

/// Runs `work` in a process of its own and gives the number that it returns.
template <class Work> double inFreshProcess(Work work)
{
    int ends[2];
    if (::pipe(ends) != 0)
        return 0;
    pid_t const child = ::fork();
    if (child == 0) {
        double const result = work();
        ::_exit(::write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
    }
    double result = 0;
    if (::read(ends[0], &result, sizeof result) != sizeof result)
        result = 0;
    ::waitpid(child, nullptr, 0);
    ::close(ends[0]);
    ::close(ends[1]);
    return result;
}

/// Peak of a process of its own that runs `work`.
template <class Work> double peakOf(Work work)
{
    return inFreshProcess([&] {
        // The peak counts from here on.
        std::ofstream("/proc/self/clear_refs") << 5;
        work();
        return peakMemory();
    });
}

/// Seconds that `work` takes in a process that has held no model before: the memory of its entities
/// is touched for the first time, as in a host that reads its first model.
template <class Work> double secondsOfFirst(Work work)
{
    return inFreshProcess([&] {
        transl_tk::Pool::construct("first");
        auto const start = std::chrono::steady_clock::now();
        work();
        auto const end = std::chrono::steady_clock::now();
        return std::chrono::duration<double>(end - start).count();
    });
}

/// A writer process that holds the segment `name` with the model that `create` makes.
class Writer
{
public:
    template <class Create> Writer(std::string name, Create create) : m_Name(std::move(name))
    {
        int ends[2];
        if (::pipe(ends) != 0)
            return;
        m_Process = ::fork();
        if (m_Process == 0) {
            transl_tk::Pool::construct("source");
            create();
            long long const size = transl_tk::Server::writeSharedMem(m_Name);
            if (::write(ends[1], &size, sizeof size) != sizeof size)
                ::_exit(1);
            for (;;)
                ::pause();
        }
        if (::read(ends[0], &m_Size, sizeof m_Size) != sizeof m_Size)
            m_Size = 0;
        ::close(ends[0]);
        ::close(ends[1]);
    }
    Writer(Writer const &) = delete;
    Writer & operator=(Writer const &) = delete;
    ~Writer()
    {
        ::kill(m_Process, SIGKILL);
        ::waitpid(m_Process, nullptr, 0);
        // The name is free with its holder's death; creating and releasing it clears it away.
        transl_tk::SharedMem last(m_Name, 1, true);
        last.map();
        last.unmap();
    }

    long long size() const { return m_Size; }

private:
    std::string m_Name;
    pid_t m_Process = -1;
    long long m_Size = 0;
};

} // namespace bench

#endif
