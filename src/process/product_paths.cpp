#include "process/exec_report.h"
#include "reporting/platform_text.h"

#include <keld-common/channel.h>
#include <keld-transl/process/product_paths.h>

#include <algorithm>

namespace transl_tk {

namespace {

/// What distinguishes one translator of the product from the others.
struct Translator
{
    char const * name; ///< part of every file name of it
    char const * libPathVariable;
    char const * probedVariable;
    char const * fallbackVariable; ///< probed next; null for none
    char const * probedFile;       ///< file of the outside library that tells of its installation
    char const * missingVariableLine; ///< null for silence
    char const * installationLine;
    char const * failureLine;
};

constexpr Translator jt{"jt",
                        "JT_OPEN_PATH",
                        "JT_OPEN_PATH",
                        nullptr,
                        "/JtTk107.dll",
                        nullptr,
                        "|JT_LOG: JT Installation path: ",
                        "|JT_LOG: Exec file check failed or cannot access path: "};

// An installation of the CT library is recognised by its reader, directly in the library's
// directory.
constexpr Translator ct{"ct",
                        "CT_LIB_PATH_DBG",
                        "CT_LIB_PATH",
                        "CT_LIB_PATH_DBG",
                        "/ct_reader.dll",
                        "|CT_LOG: CT installation read from CT_LIB_PATH cannot be found",
                        "|CT_LOG: CT installation path: ",
                        "|CT_LOG: Exec file check failed or cannot access path: "};

constexpr Translator rhino{"rhino",
                           "RHINO_LIB_PATH",
                           "RHINO_LIB_PATH",
                           nullptr,
                           "/opennurbs_public.dll",
                           nullptr,
                           "|RHINO_LOG: Rhino Installation path: ",
                           "|RHINO_LOG: Exec file check failed or cannot access path: "};

constexpr Translator u3dPdf{"u3dpdf",
                            "U3DPDF_LIB_PATH",
                            "U3DPDF_LIB_PATH",
                            nullptr,
                            "/IFXCore.dll",
                            nullptr,
                            "|U3DPDF_LOG: U3dPdf Installation path: ",
                            "|U3DPDF_LOG: Exec file check failed or cannot access path: "};

std::string scriptName(Translator const & translator)
{
    return std::string("keld_") + translator.name + ".sh";
}

std::string localNameOf(Translator const & translator, ExecPaths const & paths)
{
    switch (paths.m_System) {
    case 0:
        return std::string(translator.name) + "_translator.exe";
    case 1:
    case 2:
        return scriptName(translator);
    default:
        return {};
    }
}

std::string installationNameOf(Translator const & translator, ExecPaths const & paths)
{
    switch (paths.m_System) {
    case 0:
        return std::string("keld_") + translator.name +
               (paths.m_Is64Bit ? "_win64.exe" : "_win32.exe");
    case 1:
        return paths.m_Is64Bit ? scriptName(translator) : std::string();
    case 2:
        return scriptName(translator);
    default:
        return {};
    }
}

std::string linuxExecLocalOf(Translator const & translator, ExecPaths & paths)
{
    return paths.localDirectory() + "/" + translator.name + "_translator";
}

std::string linuxExecInstallationOf(Translator const & translator)
{
    return std::string("/keld_") + translator.name + "_linux_x86_64";
}

bool isUsable(ExecPaths const & paths, std::string const & probedPath)
{
    return fileExists(probedPath) && paths.checkExecFile();
}

bool probe(Translator const & translator, ExecPaths const & paths)
{
    auto const directory = environmentText(translator.probedVariable);
    if (!directory) {
        if (translator.missingVariableLine != nullptr)
            reportLine(translator.missingVariableLine);
        return false;
    }
    std::string const path = *directory + translator.probedFile;
    if (isUsable(paths, path)) {
        reportLine(translator.installationLine, path);
        return true;
    }
    reportLine(translator.failureLine, path);
    if (translator.fallbackVariable == nullptr)
        return false;
    auto const fallback = environmentText(translator.fallbackVariable);
    return fallback && isUsable(paths, *fallback + translator.probedFile);
}

/// The verdict of the class `Paths`, probed the first time.
template <class Paths> bool isInstalledOnce(Translator const & translator, Paths const & paths)
{
    auto & status = Paths::m_InstallationStatus;
    if (status == Paths::NotInstalled)
        return false;
    reportLine("|System           : ", paths.m_System, '\n');
    if (status == Paths::Unknown)
        status = probe(translator, paths) ? Paths::Installed : Paths::NotInstalled;
    return status == Paths::Installed;
}

} // namespace

JTPaths::InstallationStatus JTPaths::m_InstallationStatus = JTPaths::Unknown;
CTPaths::InstallationStatus CTPaths::m_InstallationStatus = CTPaths::Unknown;
RhinoPaths::InstallationStatus RhinoPaths::m_InstallationStatus = RhinoPaths::Unknown;
U3dPdfPaths::InstallationStatus U3dPdfPaths::m_InstallationStatus = U3dPdfPaths::Unknown;

JTPaths::JTPaths() : ExecPaths(jt.libPathVariable) {}

JTPaths::~JTPaths() = default;

bool JTPaths::isInstalled()
{
    return isInstalledOnce(jt, *this);
}

std::string JTPaths::localName()
{
    return localNameOf(jt, *this);
}

std::string JTPaths::installationName()
{
    return installationNameOf(jt, *this);
}

std::string JTPaths::linuxExecLocal()
{
    return linuxExecLocalOf(jt, *this);
}

std::string JTPaths::linuxExecInstallation()
{
    return linuxExecInstallationOf(jt);
}

CTPaths::CTPaths() : ExecPaths(ct.libPathVariable) {}

CTPaths::~CTPaths() = default;

std::string CTPaths::calcExecCmd()
{
    std::string cmd = sharedFolder();
    if (!cmd.empty())
        cmd += installationExec();
    if (cmd.empty() || !fileExists(cmd)) {
        auto const directory = environmentText("VORN_EXEC_DIR");
        if (!directory)
            return cmd;
        cmd = *directory + localExec();
    }
    if (m_System == 0)
        std::replace(cmd.begin(), cmd.end(), '/', '\\');
    reportLine("|CT_EXEC_LOG: Exec command for CT Translator: ", cmd);
    return cmd;
}

bool CTPaths::isInstalled()
{
    return isInstalledOnce(ct, *this);
}

std::string CTPaths::calcLibPath()
{
    std::string result;
    if (auto const value = environmentText(m_LibPathVariable.c_str())) {
        if (auto const path = environmentText("PATH")) {
            result = *path + ";";
            ServerSetOldPath(path->c_str());
        }
        result += *value + "/" + (m_Is64Bit ? "win-64-msvc2019-kode/" : "win-32-msvc2010-kode/");
    } else {
        reportLine("|CT_LIB_LOG: Windows Translator Path read from [ ", m_LibPathVariable,
                   "] not found");
    }
    reportLine("|CT_LIB_LOG: Windows CT library path: ", result);
    return result;
}

std::string CTPaths::localName()
{
    return localNameOf(ct, *this);
}

std::string CTPaths::installationName()
{
    return installationNameOf(ct, *this);
}

std::string CTPaths::linuxExecLocal()
{
    return linuxExecLocalOf(ct, *this);
}

std::string CTPaths::linuxExecInstallation()
{
    return linuxExecInstallationOf(ct);
}

RhinoPaths::RhinoPaths() : ExecPaths(rhino.libPathVariable) {}

RhinoPaths::~RhinoPaths() = default;

bool RhinoPaths::isInstalled()
{
    return isInstalledOnce(rhino, *this);
}

std::string RhinoPaths::localName()
{
    return localNameOf(rhino, *this);
}

std::string RhinoPaths::installationName()
{
    return installationNameOf(rhino, *this);
}

std::string RhinoPaths::linuxExecLocal()
{
    return linuxExecLocalOf(rhino, *this);
}

std::string RhinoPaths::linuxExecInstallation()
{
    return linuxExecInstallationOf(rhino);
}

U3dPdfPaths::U3dPdfPaths() : ExecPaths(u3dPdf.libPathVariable) {}

U3dPdfPaths::~U3dPdfPaths() = default;

bool U3dPdfPaths::isInstalled()
{
    return isInstalledOnce(u3dPdf, *this);
}

std::string U3dPdfPaths::localName()
{
    return localNameOf(u3dPdf, *this);
}

std::string U3dPdfPaths::installationName()
{
    return installationNameOf(u3dPdf, *this);
}

std::string U3dPdfPaths::linuxExecLocal()
{
    return linuxExecLocalOf(u3dPdf, *this);
}

std::string U3dPdfPaths::linuxExecInstallation()
{
    return linuxExecInstallationOf(u3dPdf);
}

} // namespace transl_tk
