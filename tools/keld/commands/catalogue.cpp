#include "catalogue/catalogue.h"

#include "commands/arguments.h"
#include "commands/commands.h"
#include "json_output.h"
#include "metadata_output.h"
#include "transfer.h"

#include <memory>
#include <string>
#include <vector>

namespace keld {

namespace {

struct Arguments
{
    std::string database;
    std::vector<std::string> conditions; ///< as `parseCondition` reads them
    bool json = false;
    double patience = defaultPatience(); ///< seconds
};

ExitCode listCatalogue(Arguments const & arguments)
{
    std::vector<Condition> conditions;
    for (std::string const & text : arguments.conditions) {
        auto const condition = parseCondition(text);
        if (!condition) {
            complain(text, "this is no condition such as \"faces>1000\".");
            return WrongUsage;
        }
        conditions.push_back(*condition);
    }
    try {
        Catalogue catalogue(arguments.database, Catalogue::Access::Read,
                            milliseconds(arguments.patience));
        auto const entries = catalogue.find(conditions);
        if (arguments.json) {
            JsonOutput json(printText);
            writeCatalogueJson(entries, json);
        } else {
            printCatalogue(entries);
        }
        return Success;
    } catch (DatabaseError const & failure) {
        complain(arguments.database, failure.what());
        return DatabaseFailed;
    }
}

} // namespace

void addCatalogueCommand(CLI::App & app, ChosenCommand & chosen)
{
    CLI::App & command = *app.add_subcommand(
        "catalogue", "List the files whose metadata stands in a database, with their counts");
    auto const arguments = std::make_shared<Arguments>();
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
        [arguments, &chosen] { chosen = [arguments] { return listCatalogue(*arguments); }; });
}

} // namespace keld
