// What does a whole run cost that moves an empty model, beside starting the same executable and
// waiting for its end?

#include "stopwatch.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/process/client_in.h>

#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

char const * const Executable = KELD_BENCH_TRANSLATOR;

class Host : public transl_tk::ClientIn
{
public:
    std::string getSharedMemName() override { return "bench run"; }
    void setProgress(int const &) override {}
    void setStatus(int const &) override {}
    std::string getExecCmd() override { return Executable; }
    std::string getLibPath() override { return ""; }
    void fillOptions() override
    {
        getExecIO()->addOption(transl_tk::IOption::create("bench", "an option without values"));
    }
    void transferModel() override { m_Arrived = transl_tk::Pool::hasInstance(); }
    void importStarted() override {}
    bool confirmImport() override { return true; }

    bool m_Arrived = false;
};

/// The yardstick.
void SpawnAndWait(benchmark::State & state)
{
    std::string executable = Executable;
    std::string argument = "nothing";
    char * arguments[] = {executable.data(), argument.data(), nullptr};
    for ([[maybe_unused]] auto iteration : state) {
        pid_t child = 0;
        int status = 1;
        if (::posix_spawn(&child, Executable, nullptr, nullptr, arguments, environ) != 0 ||
            ::waitpid(child, &status, 0) != child || status != 0)
            state.SkipWithError("the executable could not be run");
    }
}

void ImportOfAnEmptyModel(benchmark::State & state)
{
    for ([[maybe_unused]] auto iteration : state) {
        Host host;
        if (!host.read("empty", 1) || !host.m_Arrived)
            state.SkipWithError("the import failed");
        state.PauseTiming();
        transl_tk::Pool::destruct();
        state.ResumeTiming();
    }
}

BENCHMARK(SpawnAndWait)->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(2);
BENCHMARK(ImportOfAnEmptyModel)->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(2);

} // namespace
