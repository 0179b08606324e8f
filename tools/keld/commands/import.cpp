#include "batch/batch.h"
#include "commands/arguments.h"
#include "commands/commands.h"
#include "import_file.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <memory>
#include <thread>

namespace keld {

namespace {

constexpr std::size_t MostJobs = 128;

std::size_t usualJobs()
{
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, MostJobs);
}

std::string checkJobs(std::string const & text)
{
    std::size_t jobs = 0;
    char const * const end = text.data() + text.size();
    auto const result = std::from_chars(text.data(), end, jobs);
    bool const good = result.ec == std::errc() && result.ptr == end && jobs > 0 && jobs <= MostJobs;
    return good ? "" : text + " is not a whole number from 1 to " + std::to_string(MostJobs) + ".";
}

ExitCode importAll(BatchArguments const & arguments)
{
    if (arguments.files.size() > 1)
        return importFiles(arguments);
    return importFile(arguments.common, {arguments.files.front(), arguments.translator},
                      arguments.output);
}

} // namespace

void addImportCommand(CLI::App & app, ChosenCommand & chosen, bool & endsByItself)
{
    CLI::App & command =
        *app.add_subcommand("import", "Import a file and print what it holds, or several files, "
                                      "each in a process of its own, and print a table");
    auto const arguments = std::make_shared<BatchArguments>();
    arguments->jobs = usualJobs();
    command.add_option("FILE", arguments->files, "The files to import")->required();
    command
        .add_option("--translator", arguments->translator,
                    "Take this translator, whatever the suffix of a file")
        ->type_name("NAME");
    command
        .add_option("-j,--jobs", arguments->jobs,
                    "Import so many of several files at once, as many as there are processors "
                    "unless given")
        ->type_name("N")
        ->check(CLI::Validator(checkJobs, ""));
    addOutputArguments(command, arguments->output);
    CLI::Option * const points =
        command
            .add_option("--points", arguments->output.points,
                        "Print the first N points, in the order of their ids")
            ->type_name("N")
            ->check(CLI::NonNegativeNumber);
    CLI::Option * const allPoints = command.add_flag_callback(
        "--list-points",
        [arguments] { arguments->output.points = std::numeric_limits<long long>::max(); },
        "Print all points");
    addCommonArguments(command, arguments->common);
    command.callback([=, &command, &chosen, &endsByItself] {
        bool const several = arguments->files.size() > 1;
        if (several && (points->count() > 0 || allPoints->count() > 0))
            throw CLI::ValidationError("--points and --list-points print the points of one file; "
                                       "there are several files.");
        for (char const * name : {"--tree", "--whole-tree", "--transforms"})
            arguments->tree = arguments->tree || command.count(name) > 0;
        endsByItself = several;
        chosen = [arguments] { return importAll(*arguments); };
    });
}

} // namespace keld
