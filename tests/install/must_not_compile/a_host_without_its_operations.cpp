// refused: abstract
#include <keld-transl/process/client_in.h>

class Host : public transl_tk::ClientIn
{
public:
    std::string getSharedMemName() override { return {}; }
    void setProgress(int const &) override {}
    void setStatus(int const &) override {}
    std::string getExecCmd() override { return {}; }
    std::string getLibPath() override { return {}; }
    void fillOptions() override {}
    void importStarted() override {}
    bool confirmImport() override { return true; }
#ifndef KELD_MUST_NOT_COMPILE
    void transferModel() override {}
#endif
};

Host host;
