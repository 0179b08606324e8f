#include "command_line.h"

#include "catalogue/catalogue.h"
#include "commands/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <chrono>
#include <limits>
#include <map>
#include <memory>
#include <thread>

namespace keld {

namespace {

using ChosenCommand = std::function<ExitCode()>;

constexpr char const * Description =
    "Imports and exports CAD files through translators, which run as processes of their own.\n"
    "What a file holds names the translator, and where that cannot be told, or the file is to be\n"
    "written, its suffix: \"part.xyz\" goes through the installed keld_xyz.sh.";

constexpr char const * ExitCodes = R"(Exit codes:
  0  success
  1  the run failed; as a rule the translator says why
  2  wrong command line or file name
  3  no translator for the file, or one that cannot be started
  4  the translator ended without an answer
  5  options or model could not be handed over (temporary directory, shared memory)
  6  the run was cancelled
  7  output could not be written
  8  a database of metadata could not be used
  9  the translator was ended for --time-limit or --memory-limit
  10 some of several files completed and others did not
When none of several files completes, the code is the one that they share, or else 1.)";

OptionText parseOption(std::string const & text)
{
    std::size_t const equals = text.find('=');
    if (equals == 0 || equals == text.npos)
        throw CLI::ValidationError("--option", text + " is not NAME=VALUE");
    return {text.substr(0, equals), text.substr(equals + 1)};
}

/// An option for a limit of up to `most`; "nan" is none.
CLI::Option * addLimit(CLI::App & command, std::string const & name, double & limit, double most,
                       std::string const & description)
{
    auto const set = [name, &limit, most](double number) {
        if (!(number > 0 && number <= most))
            throw CLI::ValidationError(name, "the limit is a number above 0");
        limit = number;
    };
    return command.add_option_function<double>(name, set, description);
}

void addLimitArguments(CLI::App & command, Limits & limits)
{
    constexpr double Longest = 1e7;
    constexpr double Most = 1e9;
    addLimit(command, "--time-limit", limits.seconds, Longest,
             "End a translator that takes longer than SECONDS, whatever it does")
        ->type_name("SECONDS");
    addLimit(command, "--memory-limit", limits.megabytes, Most,
             "End a translator that takes more memory than MB million bytes")
        ->type_name("MB");
}

void addCommonArguments(CLI::App & command, CommonArguments & arguments)
{
    command.add_flag("-q,--quiet", arguments.quiet, "Show no progress");
    command
        .add_option(
            "--report", arguments.reportDirectory,
            "Keep reports in DIR: the page of an import, the toolkit's report file, and the "
            "translator's reports and crash dumps in folders below")
        ->type_name("DIR");
    command
        .add_option_function<std::vector<std::string>>(
            "-o,--option",
            [&arguments](std::vector<std::string> const & texts) {
                for (std::string const & text : texts)
                    arguments.options.push_back(parseOption(text));
            },
            "Give the translator an option: a whole number, a number, true, false, or a text")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    addLimitArguments(command, arguments.limits);
}

void addFileArgument(CLI::App & command, std::string const & name, std::string const & translator,
                     FileArgument & file, std::string const & description)
{
    command.add_option(name, file.path, description)->required();
    command
        .add_option(translator, file.translator,
                    "Take this translator for " + name + ", whatever it holds and is called")
        ->type_name("NAME");
}

void addOutputArguments(CLI::App & command, ImportOutput & output)
{
    command.add_option("--tree", output.tree.lines, "Print the first N nodes of the product tree")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber.description(""))
        ->capture_default_str();
    command.add_flag_callback(
        "--whole-tree", [&output] { output.tree.lines = TreeSettings::All; },
        "Print the whole product tree");
    command.add_flag("--transforms", output.tree.transforms,
                     "Print the transform of each node of the product tree");
    std::map<std::string, ReportFormat> const formats = {{"html", ReportFormat::Html},
                                                         {"json", ReportFormat::Json}};
    command
        .add_option("--report-format", output.reportFormat,
                    "What --report keeps: a page, DIR/report.html, or the same as JSON, "
                    "DIR/report.json")
        ->type_name("html|json")
        ->transform(CLI::CheckedTransformer(formats).description(""));
}

void addWaitArgument(CLI::App & command, double & patience)
{
    constexpr double Longest = 86400;
    patience = std::chrono::duration<double>(Catalogue::DefaultPatience).count();
    command.add_option("--wait", patience, "Wait at most so long for other users of the database")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.0, Longest))
        ->capture_default_str();
}

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

// Each adds a command to the command line. `chosen` must live as long as `app`; when a command line
// with the command is parsed, it becomes that command.

void addImport(CLI::App & app, ChosenCommand & chosen)
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
    command.callback([=, &command, &chosen] {
        bool const several = arguments->files.size() > 1;
        if (several && (points->count() > 0 || allPoints->count() > 0))
            throw CLI::ValidationError("--points and --list-points print the points of one file; "
                                       "there are several files.");
        for (char const * name : {"--tree", "--whole-tree", "--transforms"})
            arguments->tree = arguments->tree || command.count(name) > 0;
        chosen = [arguments] { return runImport(*arguments); };
    });
}

void addInfo(CLI::App & app, ChosenCommand & chosen)
{
    CLI::App & command =
        *app.add_subcommand("info", "Import a file and print what it holds, for programs too");
    auto const arguments = std::make_shared<InfoArguments>();
    addFileArgument(command, "FILE", "--translator", arguments->file, "The file to import");
    addOutputArguments(command, arguments->output);
    command.add_flag("--json", arguments->output.json,
                     "Print all of the model but its geometry as JSON");
    CLI::Option * const only =
        command.add_flag("--metadata", arguments->metadata,
                         "Have the translator count what the file holds, and print the counts");
    for (char const * name : {"--tree", "--whole-tree", "--transforms", "--report-format"})
        only->excludes(command.get_option(name));
    command
        .add_option("--database", arguments->database,
                    "Store the counts in the catalogue DB, which is made when it is not there")
        ->type_name("DB")
        ->needs(only);
    addWaitArgument(command, arguments->patience);
    addCommonArguments(command, arguments->common);
    command.callback(
        [arguments, &chosen] { chosen = [arguments] { return runInfo(*arguments); }; });
}

void addCatalogue(CLI::App & app, ChosenCommand & chosen)
{
    CLI::App & command = *app.add_subcommand(
        "catalogue", "List the files whose metadata stands in a database, with their counts");
    auto const arguments = std::make_shared<CatalogueArguments>();
    command.add_option("DB", arguments->database, "The database")->required();
    command
        .add_option(
            "--where", arguments->conditions,
            "Only files with such a count, as in \"faces>1000\" or \"spot welds=0\"; may be "
            "given any number of times")
        ->type_name("CONDITION")
        ->allow_extra_args(false);
    command.add_flag("--json", arguments->json, "Print JSON");
    addWaitArgument(command, arguments->patience);
    command.callback(
        [arguments, &chosen] { chosen = [arguments] { return runCatalogue(*arguments); }; });
}

void addExport(CLI::App & app, ChosenCommand & chosen)
{
    CLI::App & command = *app.add_subcommand(
        "export", "Export points: those given by --point, then those that --points generates");
    auto const arguments = std::make_shared<ExportArguments>();
    addFileArgument(command, "FILE", "--translator", arguments->file, "The file to write");
    command.add_option("--point", arguments->points, "A point; may be given any number of times")
        ->type_name("X Y Z");
    command
        .add_option("--points", arguments->generated,
                    "Generate N points on a lattice in the unit cube")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    addCommonArguments(command, arguments->common);
    command.callback(
        [arguments, &chosen] { chosen = [arguments] { return runExport(*arguments); }; });
}

void addConvert(CLI::App & app, ChosenCommand & chosen)
{
    CLI::App & command =
        *app.add_subcommand("convert", "Import a file and export its model to another one");
    auto const arguments = std::make_shared<ConvertArguments>();
    addFileArgument(command, "IN", "--from", arguments->source, "The file to import");
    addFileArgument(command, "OUT", "--to", arguments->target, "The file to write");
    addCommonArguments(command, arguments->common);
    command.callback(
        [arguments, &chosen] { chosen = [arguments] { return runConvert(*arguments); }; });
}

void addTranslators(CLI::App & app, ChosenCommand & chosen)
{
    app.add_subcommand(
           "translators",
           "List the translators: the command of each that can be used, and of any other "
           "why not and where it was looked for")
        ->callback([&chosen] { chosen = runTranslators; });
}

} // namespace

std::function<ExitCode()> parseCommandLine(int argc, char ** argv)
{
    CLI::App app(Description, "keld");
    app.footer(ExitCodes);
    app.require_subcommand(1);
    app.set_version_flag("--version", "keld 23.0.0");

    ChosenCommand chosen;
    addImport(app, chosen);
    addInfo(app, chosen);
    addCatalogue(app, chosen);
    addExport(app, chosen);
    addConvert(app, chosen);
    addTranslators(app, chosen);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const & error) {
        ExitCode const code = app.exit(error) == 0 ? Success : WrongUsage;
        return [code] { return code; };
    }
    return chosen;
}

} // namespace keld
