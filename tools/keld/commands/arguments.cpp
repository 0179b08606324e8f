#include "commands/arguments.h"

#include "catalogue/catalogue.h"

#include <map>

namespace keld {

namespace {

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

} // namespace

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
    command.add_option("--wait", patience, "Wait at most so long for other users of the database")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.0, Longest))
        ->capture_default_str();
}

double defaultPatience()
{
    return std::chrono::duration<double>(Catalogue::DefaultPatience).count();
}

std::chrono::milliseconds milliseconds(double seconds)
{
    return std::chrono::milliseconds(static_cast<int>(seconds * 1000));
}

} // namespace keld
