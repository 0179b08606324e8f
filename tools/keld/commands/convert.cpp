#include "commands/arguments.h"
#include "commands/commands.h"
#include "model_summary.h"
#include "transfer.h"

#include <keld-transl/model/pool.h>

#include <filesystem>
#include <memory>
namespace keld {

using transl_tk::Pool;

namespace {

struct Arguments
{
    CommonArguments common;
    FileArgument source;
    FileArgument target;
};

ExitCode convert(Arguments const & arguments)
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

} // namespace

void addConvertCommand(CLI::App & app, ChosenCommand & chosen)
{
    CLI::App & command =
        *app.add_subcommand("convert", "Import a file and export its model to another one");
    auto const arguments = std::make_shared<Arguments>();
    addFileArgument(command, "IN", "--from", arguments->source, "The file to import");
    addFileArgument(command, "OUT", "--to", arguments->target, "The file to write");
    addCommonArguments(command, arguments->common);
    command.callback(
        [arguments, &chosen] { chosen = [arguments] { return convert(*arguments); }; });
}

} // namespace keld
