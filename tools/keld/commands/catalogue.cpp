#include "catalogue/catalogue.h"

#include "commands/commands.h"
#include "json_output.h"
#include "metadata_output.h"
#include "transfer.h"

#include <chrono>

namespace keld {

ExitCode runCatalogue(CatalogueArguments const & arguments)
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
                            std::chrono::milliseconds(static_cast<int>(arguments.patience * 1000)));
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

} // namespace keld
