#ifndef KELD_TRANSL_PROCESS_PRODUCT_PATHS_H
#define KELD_TRANSL_PROCESS_PRODUCT_PATHS_H

#include <keld-transl/process/exec_paths.h>

namespace transl_tk {

/// The translator for JT files.
class KELD_TRANSL_EXPORT JTPaths : public ExecPaths
{
public:
    enum InstallationStatus : int { Unknown = 0, Installed = 1, NotInstalled = 2 };
    /// What the first `isInstalled` in this process has found; it is not looked for again.
    static InstallationStatus m_InstallationStatus;

    JTPaths();
    ~JTPaths() override;

    bool isInstalled() override;
    std::string localName() override;
    std::string installationName() override;
    std::string linuxExecLocal() override;
    std::string linuxExecInstallation() override;
};

/// The translator for the formats of the CT library. Its command and library path are worked out
/// by rules of their own.
class KELD_TRANSL_EXPORT CTPaths : public ExecPaths
{
public:
    enum InstallationStatus : int { Unknown = 0, Installed = 1, NotInstalled = 2 };
    /// What the first `isInstalled` in this process has found; it is not looked for again.
    static InstallationStatus m_InstallationStatus;

    CTPaths();
    ~CTPaths() override;

    std::string calcExecCmd() override;
    bool isInstalled() override;
    std::string calcLibPath() override;
    std::string localName() override;
    std::string installationName() override;
    std::string linuxExecLocal() override;
    std::string linuxExecInstallation() override;
};

/// The translator for Rhino files.
class KELD_TRANSL_EXPORT RhinoPaths : public ExecPaths
{
public:
    enum InstallationStatus : int { Unknown = 0, Installed = 1, NotInstalled = 2 };
    /// What the first `isInstalled` in this process has found; it is not looked for again.
    static InstallationStatus m_InstallationStatus;

    RhinoPaths();
    ~RhinoPaths() override;

    bool isInstalled() override;
    std::string localName() override;
    std::string installationName() override;
    std::string linuxExecLocal() override;
    std::string linuxExecInstallation() override;
};

/// The translator for U3D and PDF files.
class KELD_TRANSL_EXPORT U3dPdfPaths : public ExecPaths
{
public:
    enum InstallationStatus : int { Unknown = 0, Installed = 1, NotInstalled = 2 };
    /// What the first `isInstalled` in this process has found; it is not looked for again.
    static InstallationStatus m_InstallationStatus;

    U3dPdfPaths();
    ~U3dPdfPaths() override;

    bool isInstalled() override;
    std::string localName() override;
    std::string installationName() override;
    std::string linuxExecLocal() override;
    std::string linuxExecInstallation() override;
};

} // namespace transl_tk

#endif
