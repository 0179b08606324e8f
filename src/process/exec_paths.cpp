#include "process/exec_report.h"
#include "reporting/platform_text.h"

#include <keld-common/channel.h>
#include <keld-transl/process/exec_paths.h>

#include <algorithm>

namespace transl_tk {

namespace {

// Release of the toolkit whose shared folder belongs to this library.
constexpr char const * release = "23.0.0";

} // namespace

ExecPaths::ExecPaths(std::string const & libPathVariable) : m_LibPathVariable(libPathVariable) {}

ExecPaths::~ExecPaths() = default;

std::string ExecPaths::calcExecCmd()
{
    std::string cmd;
    bool isFound = false;
    auto const tryInstallation = [&] {
        cmd += installationExec();
        reportLine("|EXEC_LOG: Executable path: ", cmd);
        isFound = fileExists(cmd);
        if (!isFound)
            reportLine("|EXEC_LOG: Cannot access path of executable: ", cmd);
    };

    if (m_System == 0) {
        cmd = sharedFolder();
        if (!cmd.empty())
            tryInstallation();
    }
    if (!isFound) {
        auto const directory = environmentText("VORN_EXEC_DIR");
        if (!directory)
            return cmd;
        cmd = *directory;
        tryInstallation();
        if (!isFound) {
            cmd = *directory + localExec();
            reportLine("|EXEC_LOG: Try the local executable in: ", cmd);
        }
    }
    if (m_System == 0)
        std::replace(cmd.begin(), cmd.end(), '/', '\\');
    return cmd;
}

std::string ExecPaths::localDirectory()
{
    return "/cad_translators";
}

std::string ExecPaths::installationDirectory()
{
    switch (m_System) {
    case 0:
        return "/";
    case 1:
    case 2:
        return "/bin";
    default:
        return {};
    }
}

bool ExecPaths::isInstalled()
{
    return false;
}

std::string ExecPaths::calcLibPath()
{
    std::string result;
    if (auto const value = environmentText(m_LibPathVariable.c_str())) {
        result = *value + "/;";
        if (auto const path = environmentText("PATH")) {
            result += *path + ";";
            ServerSetOldPath(path->c_str());
        }
    } else {
        reportLine("|LIB_LOG: Windows Translator Path read from [ ", m_LibPathVariable,
                   "] not found");
    }
    reportLine("|LIB_LOG: Windows Translator library path: ", result);
    return result;
}

bool ExecPaths::checkExecFile() const
{
    // The command is worked out by operations that a host may override and that are not const; the
    // ones of this library change nothing in the object.
    std::string cmd = const_cast<ExecPaths *>(this)->calcExecCmd();
    bool isThere = false;
    if (m_System != 2) {
        isThere = fileExists(cmd);
    } else if (auto const slash = cmd.rfind('/'); slash != std::string::npos) {
        auto * const self = const_cast<ExecPaths *>(this);
        cmd.replace(slash, std::string::npos, self->linuxExecInstallation());
        isThere = fileExists(cmd);
        if (!isThere) {
            reportLine("|EXEC_LOG: Cannot access path of Linux executable: ", cmd);
            cmd.replace(slash, std::string::npos, self->linuxExecLocal());
            isThere = fileExists(cmd);
            reportLine("|EXEC_LOG: Try the local Linux executable in: ", cmd, " | (",
                       isThere ? 1 : 0, ")");
        }
    }
    reportLine("|EXEC_LOG: Exec command: ", cmd, " | (", isThere ? 1 : 0, ")");
    return isThere;
}

std::string ExecPaths::installationExec()
{
    return installationPath() + installationName();
}

std::string ExecPaths::installationPath()
{
    std::string path;
    if (m_System == 0)
        path = installationDirectory() + (m_Is64Bit ? "/win64/cadexe/" : "/win32/cadexe/");
    else if (m_System <= 2)
        path = installationDirectory() + "/";
    reportLine("|INSTALL_LOG: Installation Path: ", path);
    return path;
}

std::string ExecPaths::localExec()
{
    return localPath() + localName();
}

std::string ExecPaths::localPath()
{
    if (m_System == 0)
        return localDirectory() + (m_Debug ? "/Debug/" : "/Release/");
    return m_System <= 2 ? "/" : "";
}

std::string ExecPaths::sharedFolder()
{
    auto location = environmentText("KELD_SHARED_DIR");
    std::string folder = location.value_or("");
    if (!location) {
        location = environmentText("VORN_EXEC_DIR");
        if (location)
            folder = *location + "/../shared_v" + release;
    }
    reportLine("|EXEC_LOG: keld_shared location: ", location.value_or(""));
    if (!location)
        return {};
    if (!fileExists(folder)) {
        reportLine("|EXEC_LOG: Cannot access keld_shared location: ", folder);
        return {};
    }
    reportLine("|EXEC_LOG: Keld Shared location: ", folder);
    return folder;
}

} // namespace transl_tk
