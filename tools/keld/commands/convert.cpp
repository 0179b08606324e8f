#include "commands/commands.h"
#include "interrupt.h"
#include "model_summary.h"
#include "transfer.h"

#include <keld-transl/model/pool.h>

#include <filesystem>

namespace keld {

using transl_tk::Pool;

ExitCode runConvert(ConvertArguments const & arguments)
{
    FileArgument const & source = arguments.source;
    FileArgument const & target = arguments.target;
    if (!isUsableName(source.path) || !isUsableName(target.path))
        return WrongUsage;
    std::error_code error;
    if (source.path == target.path ||
        std::filesystem::equivalent(source.path, target.path, error)) {
        complain(target.path, "source and target are the same file.");
        return WrongUsage;
    }

    cleanUpOnInterrupt();
    PoolGuard const pool;
    RunReport const report(arguments.common.reportDirectory);
    RunOutcome imported;
    if (!importModel(arguments.common, report, source, false, imported) || imported.code != Success)
        return imported.code;
    printSummary(*Pool::getInstance()->currentSubPool());
    return exportModel(arguments.common, report, target, [&] {
        Pool::getInstance()->setCurrent(source.path);
        Pool::getInstance()->logger()->clear();
    });
}

} // namespace keld
