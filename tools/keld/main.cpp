#include "catalogue/catalogue.h"
#include "commands.h"
#include "installation.h"
#include "interrupt.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <limits>
#include <map>

namespace {

constexpr char const * Description =
    "Imports and exports CAD files through translators, which run as processes of their own.\n"
    "The file's suffix names the translator: \"part.xyz\" goes through the installed keld_xyz.sh.";

constexpr char const * ExitCodes = R"(Exit codes:
  0  success
  1  the run failed; as a rule the translator says why
  2  wrong command line or file name
  3  no translator for the file, or one that cannot be started
  4  the translator ended without an answer
  5  options or model could not be handed over (temporary directory, shared memory)
  6  the run was cancelled
  7  output could not be written
  8  a database of metadata could not be used)";

void addCommonArguments(CLI::App & command, keld::CommonArguments & arguments)
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
                for (std::string const & text : texts) {
                    std::size_t const equals = text.find('=');
                    if (equals == 0 || equals == text.npos)
                        throw CLI::ValidationError("--option", text + " is not NAME=VALUE");
                    arguments.options.emplace_back(text.substr(0, equals), text.substr(equals + 1));
                }
            },
            "Give the translator an option: a whole number, a number, true, false, or a text")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
}

void addFileArgument(CLI::App & command, std::string const & name, std::string const & translator,
                     keld::FileArgument & file, std::string const & description)
{
    command.add_option(name, file.path, description)->required();
    command
        .add_option(translator, file.translator,
                    "Take this translator for " + name + ", whatever its suffix")
        ->type_name("NAME");
}

void addImportArguments(CLI::App & command, keld::FileArgument & file, keld::ImportOutput & output)
{
    addFileArgument(command, "FILE", "--translator", file, "The file to import");
    command.add_option("--tree", output.tree.lines, "Print the first N nodes of the product tree")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber.description(""))
        ->capture_default_str();
    command.add_flag_callback(
        "--whole-tree", [&output] { output.tree.lines = keld::TreeSettings::All; },
        "Print the whole product tree");
    command.add_flag("--transforms", output.tree.transforms,
                     "Print the transform of each node of the product tree");
    std::map<std::string, keld::ReportFormat> const formats = {{"html", keld::ReportFormat::Html},
                                                               {"json", keld::ReportFormat::Json}};
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
    command.add_option("--wait", patience, "Wait at most so long for other users of the database")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.0, Longest))
        ->capture_default_str();
}

void addMetadataArguments(CLI::App & command, bool & metadata, keld::MetadataOutput & output,
                          double & patience)
{
    CLI::Option * const only =
        command.add_flag("--metadata", metadata,
                         "Have the translator count what the file holds, and print the counts");
    for (char const * name : {"--tree", "--whole-tree", "--transforms", "--report-format"})
        only->excludes(command.get_option(name));
    command
        .add_option("--database", output.database,
                    "Store the counts in the catalogue DB, which is made when it is not there")
        ->type_name("DB")
        ->needs(only);
    addWaitArgument(command, patience);
}

int runCommandLine(int argc, char ** argv)
{
    CLI::App app(Description, "keld");
    app.footer(ExitCodes);
    app.require_subcommand(1);
    app.set_version_flag("--version", "keld 23.0.0");

    keld::CommonArguments arguments;
    keld::FileArgument source;
    keld::FileArgument target;
    keld::ImportOutput output;
    std::vector<std::array<double, 3>> points;
    int generated = 0;
    bool isMetadata = false;
    keld::MetadataOutput metadata;
    std::string database;
    keld::CatalogueQuery query;
    double patience = std::chrono::duration<double>(keld::Catalogue::DefaultPatience).count();

    CLI::App * const import = app.add_subcommand("import", "Import a file and print what it holds");
    addImportArguments(*import, source, output);
    import
        ->add_option("--points", output.points,
                     "Print the first N points, in the order of their ids")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    import->add_flag_callback(
        "--list-points", [&output] { output.points = std::numeric_limits<long long>::max();
},
        "Print all points");
addCommonArguments(*import, arguments);

CLI::App * const info =
    app.add_subcommand("info", "Import a file and print what it holds, for programs too");
addImportArguments(*info, source, output);
info->add_flag("--json", output.json, "Print all of the model but its geometry as JSON");
addMetadataArguments(*info, isMetadata, metadata, patience);
addCommonArguments(*info, arguments);

CLI::App * const catalogue = app.add_subcommand(
    "catalogue", "List the files whose metadata stands in a database, with their counts");
catalogue->add_option("DB", database, "The database")->required();
catalogue
    ->add_option("--where", query.conditions,
                 "Only files with such a count, as in \"faces>1000\" or \"spot welds=0\"; may be "
                 "given any number of times")
    ->type_name("CONDITION")
    ->allow_extra_args(false);
catalogue->add_flag("--json", query.json, "Print JSON");
addWaitArgument(*catalogue, patience);

CLI::App * const exporting = app.add_subcommand(
    "export", "Export points: those given by --point, then those that --points generates");
addFileArgument(*exporting, "FILE", "--translator", target, "The file to write");
exporting->add_option("--point", points, "A point; may be given any number of times")
    ->type_name("X Y Z");
exporting->add_option("--points", generated, "Generate N points on a lattice in the unit cube")
    ->type_name("N")
    ->check(CLI::NonNegativeNumber);
addCommonArguments(*exporting, arguments);

CLI::App * const converting =
    app.add_subcommand("convert", "Import a file and export its model to another one");
addFileArgument(*converting, "IN", "--from", source, "The file to import");
addFileArgument(*converting, "OUT", "--to", target, "The file to write");
addCommonArguments(*converting, arguments);

CLI::App * const translators = app.add_subcommand(
    "translators", "List the translators, where they are and whether they can be used");

try {
    app.parse(argc, argv);
} catch (CLI::ParseError const & error) {
    return app.exit(error) == 0 ? keld::Success : keld::WrongUsage;
}

keld::chooseInstallation();
keld::cleanUpOnInterrupt();
if (*translators)
    return keld::listTranslators();
if (*catalogue)
    return keld::listCatalogue(database, query, patience);
if (*info && isMetadata) {
    metadata.json = output.json;
    return keld::importMetadata(arguments, source, metadata, patience);
}
if (*import || *info)
    return keld::importFile(arguments, source, output);
if (*exporting)
    return keld::exportPoints(arguments, target, points, generated);
return keld::convert(arguments, source, target);
} // namespace

} // namespace

int main(int argc, char ** argv)
{
    int code = keld::RunFailed;
    try {
        code = runCommandLine(argc, argv);
    } catch (std::filesystem::filesystem_error const & error) {
        std::fprintf(stderr, "keld: %s\n", error.what());
        code = keld::OutputFailed;
    } catch (std::exception const & exception) {
        std::fprintf(stderr, "keld: %s\n", exception.what());
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        std::fputs("keld: standard output could not be written.\n", stderr);
        return code == keld::Success ? keld::OutputFailed : code;
    }
    return code;
}
