#ifndef KELD_TOOLS_TRANSLATORS_H
#define KELD_TOOLS_TRANSLATORS_H

#include "tried_paths.h"

#include <keld-transl/process/exec_paths.h>

#include <memory>
#include <string>
#include <vector>

namespace keld {

/// Any other translator, which stands as keld_<name>.sh and keld_<name>_linux_x86_64 in the
/// installation. It is looked for there alone, anew each time, and no variable is needed.
class KeldPaths : public transl_tk::ExecPaths
{
public:
    explicit KeldPaths(std::string const & name);

    /// Whether script and executable are there and may be executed.
    bool isInstalled() override;

    /// The value of KELD_LIB_PATH; empty as a rule, since translators know where their libraries
    /// lie.
    std::string calcLibPath() override;

    std::string localName() override;
    std::string installationName() override;
    std::string linuxExecLocal() override;
    std::string linuxExecInstallation() override;

    /// What keeps the translator from being started, in words behind "the translator"; empty when
    /// nothing does.
    std::string trouble();

    /// Where it was looked for.
    std::vector<TriedPath> triedPaths();

private:
    std::string m_Name;
};

/// A translator for a run.
struct TranslatorChoice
{
    std::string name;
    unsigned int serverType = 1;
    std::unique_ptr<transl_tk::ExecPaths> paths;
    std::string trouble;          ///< why it cannot be used, a clause; empty when it can
    std::vector<TriedPath> tried; ///< where it was looked for; empty when it can be used
    std::string remark;           ///< that the file is not what its name says; empty as a rule
};

/// The translator `name`, or, when that is empty, the one for what `file` holds, or, when that
/// cannot be told, the one for files named like `file`. A name that is not one of the product's is
/// that of an installed keld_<name>.sh.
TranslatorChoice chooseForImport(std::string const & name, std::string const & file);

/// The translator `name`, or, when that is empty, the one for files named like `file`, which need
/// not be there.
TranslatorChoice chooseForExport(std::string const & name, std::string const & file);

/// The product's translators, the one for STEP, and all keld_<name>.sh that are installed beside
/// them.
std::vector<TranslatorChoice> allTranslators();

} // namespace keld

#endif
