#ifndef KELD_TESTS_PROCESS_SCRIPTED_HOST_H
#define KELD_TESTS_PROCESS_SCRIPTED_HOST_H

#include "support/leftovers.h"

#include <keld-transl/process/client_in.h>
#include <keld-transl/process/client_out.h>

#include <functional>
#include <string>
#include <vector>

namespace tests {

/// A command line that starts the scripted translator with `script`.
std::string scriptedCommand(std::string const & script);

/// A host that notes what the library asks of it. `Driver` is `ClientIn` or `ClientOut`.
template <class Driver> class NotingHost : public Driver
{
public:
    std::string getSharedMemName() override { return m_Segment; }
    void setProgress(int const & percent) override { note("progress " + std::to_string(percent)); }
    void setStatus(int const & value) override { note("status " + std::to_string(value)); }
    std::string getExecCmd() override { return m_Command; }
    std::string getLibPath() override { return m_LibraryPath; }
    void fillOptions() override
    {
        note("fill options");
        if (m_FillOptions)
            m_FillOptions(*this->getExecIO());
    }
    void transferModel() override
    {
        note("transfer model");
        if (m_TransferModel)
            m_TransferModel();
    }

    void note(std::string const & words) { m_Notes.push_back(words); }

    std::vector<std::string> m_Notes;
    std::string m_Segment;
    std::string m_Command;
    std::string m_LibraryPath;
    std::function<void(transl_tk::IExecIO &)> m_FillOptions = addNothing;
    std::function<void()> m_TransferModel;

private:
    /// The options file always has an option in it.
    static void addNothing(transl_tk::IExecIO & options)
    {
        options.addOption(transl_tk::IOption::create("quiet", "an option without values"));
    }
};

class ImportHost : public NotingHost<transl_tk::ClientIn>
{
public:
    void importStarted() override { note("import started"); }
    bool confirmImport() override
    {
        note("confirm import");
        return m_Confirms;
    }

    bool m_Confirms = true;
};

class ExportHost : public NotingHost<transl_tk::ClientOut>
{};

} // namespace tests

#endif
