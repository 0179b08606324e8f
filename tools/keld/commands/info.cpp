#include "catalogue/metadata_store.h"
#include "commands/commands.h"
#include "import_file.h"
#include "interrupt.h"
#include "json_output.h"
#include "metadata_output.h"
#include "transfer.h"
#include "translators.h"

#include <keld-transl/model/pool.h>
#include <keld-translator-kit/translator.h>

#include <filesystem>

namespace keld {

using transl_tk::Pool;
using transl_tk::SubPool;

namespace {

int milliseconds(double seconds)
{
    return static_cast<int>(seconds * 1000);
}

/// Whether the catalogue `database`, if it is there, can be written to; says why not. A run can
/// take long, and is for nothing when it cannot.
bool isUsableCatalogue(std::string const & database, double patience)
{
    std::error_code error;
    if (database.empty() || !std::filesystem::exists(database, error))
        return true;
    try {
        MetadataStore().connect(database, milliseconds(patience), 0, 0, CatalogueForWriting);
        return true;
    } catch (DatabaseError const & failure) {
        complain(database, failure.what());
        return false;
    }
}

/// Stores what `store` has collected about `file`; says why not when it cannot.
bool keepMetadata(MetadataStore & store, FileArgument const & file, std::string const & database,
                  double patience)
{
    try {
        auto const path = std::filesystem::weakly_canonical(std::filesystem::absolute(file.path));
        store.storeNEUTRAL(path, 0);
        store.storeVORN(chooseForImport(file.translator, file.path).name, 0);
        store.connect(database, milliseconds(patience), 0, 0, CatalogueForWriting);
        store.storeData();
        store.disconnect();
        return true;
    } catch (DatabaseError const & failure) {
        complain(database, failure.what());
        return false;
    }
}

/// Takes over the metadata that came. What a failed run does not bring is no second failure.
void takeMetadata(MetadataStore & store, std::string const & file, RunOutcome & outcome)
{
    try {
        store.addMetadata();
    } catch (std::runtime_error const & failure) {
        if (outcome.code != Success)
            return;
        outcome.code = ExchangeFailed;
        outcome.explanation = failure.what();
        complain(file, outcome.explanation);
    }
}

ExitCode importMetadata(InfoArguments const & arguments)
{
    FileArgument const & file = arguments.file;
    if (!isUsableName(file.path))
        return WrongUsage;
    if (!isUsableCatalogue(arguments.database, arguments.patience))
        return DatabaseFailed;
    PoolGuard const pool;
    RunReport const report(arguments.common.reportDirectory);
    CommonArguments withMetadata = arguments.common;
    withMetadata.options.emplace(withMetadata.options.begin(), translator_kit::MetadataOnlyOption,
                                 "true");
    RunOutcome outcome;
    if (!importModel(withMetadata, report, file, arguments.output.json, outcome))
        return outcome.code;

    MetadataStore store;
    takeMetadata(store, file.path, outcome);
    bool const kept = outcome.code != Success || arguments.database.empty() ||
                      keepMetadata(store, file, arguments.database, arguments.patience);
    SubPool & model = *Pool::getInstance()->currentSubPool();
    if (arguments.output.json) {
        JsonOutput json(printText);
        writeMetadataJson(file.path, outcome, store.content(), model, json);
    } else if (outcome.code == Success) {
        printMetadata(store.content());
    }
    return kept ? outcome.code : DatabaseFailed;
}

} // namespace

ExitCode runInfo(InfoArguments const & arguments)
{
    cleanUpOnInterrupt();
    return arguments.metadata ? importMetadata(arguments)
                              : importFile(arguments.common, arguments.file, arguments.output);
}

} // namespace keld
