#include "commands/arguments.h"
#include "commands/commands.h"
#include "import_file.h"

#include <limits>
#include <memory>

namespace keld {

namespace {

struct Arguments
{
    CommonArguments common;
    FileArgument file;
    ImportOutput output;
};

} // namespace

void addImportCommand(CLI::App & app, ChosenCommand & chosen)
{
    CLI::App & command = *app.add_subcommand("import", "Import a file and print what it holds");
    auto const arguments = std::make_shared<Arguments>();
    addImportArguments(command, arguments->file, arguments->output);
    command
        .add_option("--points", arguments->output.points,
                    "Print the first N points, in the order of their ids")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    command.add_flag_callback(
        "--list-points",
        [arguments] { arguments->output.points = std::numeric_limits<long long>::max(); },
        "Print all points");
    addCommonArguments(command, arguments->common);
    command.callback([arguments, &chosen] {
        chosen = [arguments] {
            return importFile(arguments->common, arguments->file, arguments->output);
        };
    });
}

} // namespace keld
