#include "step_paths.h"

#include <keld-common/files.h>
#include <keld-transl/process/server.h>

#include <cstdlib>
#include <ostream>

namespace keld {

namespace {

constexpr unsigned int Windows = 0;
constexpr unsigned int Script = 1;
constexpr unsigned int ScriptWithLinuxExecutable = 2;

std::ostream & report()
{
    return transl_tk::Server::Stream()->post(transl_tk::StreamPolicy::Report);
}

} // namespace

StepPaths::InstallationStatus StepPaths::m_InstallationStatus = StepPaths::Unknown;

StepPaths::StepPaths() : ExecPaths("STEP_LIB_PATH") {}

bool StepPaths::isInstalled()
{
    if (m_InstallationStatus == NotInstalled)
        return false;
    report() << "|System           : " << m_System << '\n' << std::endl;
    if (m_InstallationStatus == Unknown)
        m_InstallationStatus = probe() ? Installed : NotInstalled;
    return m_InstallationStatus == Installed;
}

std::string StepPaths::localName()
{
    if (m_System == Windows)
        return "step_translator.exe";
    return m_System <= ScriptWithLinuxExecutable ? "keld_step.sh" : "";
}

std::string StepPaths::installationName()
{
    if (m_System == Windows)
        return m_Is64Bit ? "keld_step_win64.exe" : "keld_step_win32.exe";
    return m_System == Script && !m_Is64Bit ? "" : localName();
}

std::string StepPaths::linuxExecLocal()
{
    return localDirectory() + "/step_translator";
}

std::string StepPaths::linuxExecInstallation()
{
    return "/keld_step_linux_x86_64";
}

bool StepPaths::probe()
{
    constexpr char Failed[] = "|STEP_LOG: Exec file check failed or cannot access path: ";
    char const * const library = std::getenv(m_LibPathVariable.c_str());
    if (library != nullptr && iaccess(library, "e") != 0) {
        report() << Failed << library << std::endl;
        return false;
    }
    bool const isThere = checkExecFile();
    std::string const command = calcExecCmd(); // which writes lines of its own
    report() << (isThere ? "|STEP_LOG: STEP Installation path: " : Failed) << command << std::endl;
    return isThere;
}

} // namespace keld
