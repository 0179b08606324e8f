#include "step/sent_model.h"

#include "step/made_files.h"
#include "step/received_model.h"
#include "support/leftovers.h"
#include "support/segments.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/process/client_out.h>
#include <keld-transl/reporting/logger_policy.h>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace tests {

namespace {

using transl_tk::IOption;
using transl_tk::IValue;
using transl_tk::Pool;

IValue * valueOf(std::string const & words)
{
    char * end = nullptr;
    double const number = std::strtod(words.c_str(), &end);
    if (!words.empty() && *end == '\0')
        return IValue::create(number);
    return words == "true" ? IValue::create(true) : IValue::create(words.c_str());
}

class Host : public transl_tk::ClientOut
{
public:
    Host(std::function<void()> const & fill, std::map<std::string, std::string> const & options,
         std::string const & command)
        : m_Segment(segmentName()), m_Fill(fill), m_Options(options),
          m_Command(command.empty() ? KELD_TEST_STEP_TRANSLATOR : command)
    {}

    std::string getExecCmd() override { return m_Command; }
    std::string getLibPath() override { return {}; }
    std::string getSharedMemName() override { return m_Segment; }
    void setProgress(int const &) override {}
    void setStatus(int const &) override {}
    void transferModel() override { m_Fill(); }
    void fillOptions() override
    {
        getExecIO()->addOption(IOption::create("host", IValue::create("test"), ""));
        for (auto const & [name, value] : m_Options)
            getExecIO()->addOption(IOption::create(name.c_str(), valueOf(value), ""));
    }

private:
    std::string m_Segment;
    std::function<void()> const & m_Fill;
    std::map<std::string, std::string> const & m_Options;
    std::string m_Command;
};

/// Has the standard error of this process and of its children in a file while it lives.
class ErrorsInFile
{
public:
    explicit ErrorsInFile(std::string const & path)
        : m_Old(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3))
    {
        std::fflush(stderr);
        int const file = open(path.c_str(), O_CREAT | O_WRONLY | O_APPEND | O_CLOEXEC, 0600);
        dup2(file, STDERR_FILENO);
        close(file);
    }
    ErrorsInFile(ErrorsInFile const &) = delete;
    ErrorsInFile & operator=(ErrorsInFile const &) = delete;
    ~ErrorsInFile()
    {
        std::fflush(stderr);
        dup2(m_Old, STDERR_FILENO);
        close(m_Old);
    }

private:
    int m_Old;
};

} // namespace

SentModel::SentModel(std::string const & path, std::function<void()> const & fill,
                     std::map<std::string, std::string> const & options,
                     std::string const & command)
{
    TemporaryDirectory const files;
    {
        ErrorsInFile const errors(files / "errors");
        Host host(fill, options, command);
        host.write(path, 1);
        m_Status = host.serverExitStatus();
    }
    m_Log = contentOf(files / "errors");
}

SentModel passOn(std::string const & from, std::string const & to,
                 std::map<std::string, std::string> const & options)
{
    ReceivedModel const received(from);
    return SentModel(
        to,
        [&] {
            Pool::getInstance()->setCurrent(from);
            Pool::getInstance()->logger()->clear();
        },
        options);
}

} // namespace tests
