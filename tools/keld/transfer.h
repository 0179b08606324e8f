#ifndef KELD_TOOLS_TRANSFER_H
#define KELD_TOOLS_TRANSFER_H

#include "exit_code.h"
#include "run_arguments.h"
#include "run_outcome.h"
#include "run_report.h"

#include <functional>
#include <string>

namespace keld {

/// Frees all models at the end of a command.
class PoolGuard
{
public:
    PoolGuard() = default;
    PoolGuard(PoolGuard const &) = delete;
    PoolGuard & operator=(PoolGuard const &) = delete;
    ~PoolGuard();
};

/// Says on standard error what is wrong with `subject`, a file as a rule.
void complain(std::string const & subject, std::string const & words);

/// Why `file` cannot be named to a translator, a sentence; empty when it can.
std::string nameTrouble(std::string const & file);

/// Whether `file` can be named to a translator; says why not.
bool isUsableName(std::string const & file);

/// Imports `file` and says how that ended, of a success only unless it is to be silent. The model
/// stays in the pool. False when there is no translator for it.
bool importModel(CommonArguments const & arguments, RunReport const & report,
                 FileArgument const & file, bool silentSuccess, RunOutcome & outcome);

/// Exports to `file` what `fillModel` puts into the current sub-pool, and says how that ended.
ExitCode exportModel(CommonArguments const & arguments, RunReport const & report,
                     FileArgument const & file, std::function<void()> fillModel);

} // namespace keld

#endif
