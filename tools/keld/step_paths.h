#ifndef KELD_TOOLS_STEP_PATHS_H
#define KELD_TOOLS_STEP_PATHS_H

#include <keld-transl/process/exec_paths.h>

#include <string>

namespace keld {

/// The translator for STEP, IGES and BREP files. It is found like the product's translators, in the
/// installation or in a local build, but needs no variable: its library lies where the system's
/// libraries lie. STEP_LIB_PATH names another folder for it, which must be there then.
class StepPaths : public transl_tk::ExecPaths
{
public:
    enum InstallationStatus : int { Unknown = 0, Installed = 1, NotInstalled = 2 };
    /// What the first `isInstalled` in this process has found; it is not looked for again.
    static InstallationStatus m_InstallationStatus;

    StepPaths();

    bool isInstalled() override;
    std::string localName() override;
    std::string installationName() override;
    std::string linuxExecLocal() override;
    std::string linuxExecInstallation() override;

private:
    bool probe();
};

} // namespace keld

#endif
