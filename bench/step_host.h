#ifndef KELD_BENCH_STEP_HOST_H
#define KELD_BENCH_STEP_HOST_H

#include <keld-transl/process/client_in.h>

#include <string>
#include <unistd.h>

namespace bench {

/// A host that imports files by the translator for STEP and shows nothing.
class StepHost : public transl_tk::ClientIn
{
public:
    std::string getSharedMemName() override { return "bench step " + std::to_string(::getpid()); }
    void setProgress(int const &) override {}
    void setStatus(int const &) override {}
    std::string getExecCmd() override { return KELD_BENCH_TRANSLATOR; }
    std::string getLibPath() override { return {}; }
    void fillOptions() override
    {
        getExecIO()->addOption(transl_tk::IOption::create("bench", "an option without values"));
    }
    void transferModel() override {}
    void importStarted() override {}
    bool confirmImport() override { return true; }
};

} // namespace bench

#endif
