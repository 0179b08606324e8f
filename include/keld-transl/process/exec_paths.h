#ifndef KELD_TRANSL_PROCESS_EXEC_PATHS_H
#define KELD_TRANSL_PROCESS_EXEC_PATHS_H

#include <keld-transl/export.h>

#include <string>

namespace transl_tk {

/// Finds the executable and the library path of one translator from the environment, and writes
/// every step as a line of the report. A host derives its own for a translator of its own.
class KELD_TRANSL_EXPORT ExecPaths
{
protected:
    /// `libPathVariable` names the environment variable of the translator's outside library.
    explicit ExecPaths(std::string const & libPathVariable);

public:
    ExecPaths(ExecPaths const &) = default;
    ExecPaths & operator=(ExecPaths const &) = default;

    /// Full path of the executable, empty when there is none.
    virtual std::string calcExecCmd();

    /// "/cad_translators".
    virtual std::string localDirectory();

    /// "/" on Windows, "/bin" for the script forms, empty for an unknown system.
    virtual std::string installationDirectory();

    /// Whether the translator is usable here; false in this class.
    virtual bool isInstalled();

    /// Text for the translator's library search path.
    virtual std::string calcLibPath();

    /// File names of the translator in a local build and in an installation.
    virtual std::string localName() = 0;
    virtual std::string installationName() = 0;

    /// File names of the Linux executable behind the script, each with a leading slash.
    virtual std::string linuxExecLocal() = 0;
    virtual std::string linuxExecInstallation() = 0;

    virtual ~ExecPaths();

    /// Whether the file of the command is there; with system 2, the Linux executable beside it.
    bool checkExecFile() const;

    bool m_Is64Bit = true;
    std::string m_LibPathVariable;
    unsigned int m_System = 0; ///< 0 Windows, 1 scripts, 2 scripts with a Linux executable
    bool m_Debug = false;      ///< takes the debug build of a local translator

protected:
    std::string installationExec();
    std::string installationPath();
    std::string localExec();
    std::string localPath();
    std::string sharedFolder();
};

} // namespace transl_tk

#endif
