#include "commands.h"

#include "catalogue/metadata_store.h"
#include "json_output.h"
#include "metadata_output.h"
#include "model_json.h"
#include "model_summary.h"
#include "run_report.h"
#include "run_summary.h"

#include <keld-transl/model/point3d.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/reporting/logger_policy.h>
#include <keld-translator-kit/translator.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace keld {

using transl_tk::Pool;
using transl_tk::SubPool;

namespace {

constexpr std::size_t CommandSize = 4096;

/// Frees all models at the end of a command.
class PoolGuard
{
public:
    PoolGuard() = default;
    PoolGuard(PoolGuard const &) = delete;
    PoolGuard & operator=(PoolGuard const &) = delete;
    ~PoolGuard()
    {
        while (Pool::hasInstance())
            Pool::destruct();
    }
};

void complain(std::string const & subject, std::string const & words)
{
    std::fprintf(stderr, "keld: %s: %s\n", subject.c_str(), words.c_str());
}

/// Whether `file` can be named to a translator; says why not.
bool isUsableName(std::string const & file)
{
    auto const doubled = static_cast<std::size_t>(std::count(file.begin(), file.end(), '%'));
    if (file.empty())
        complain("\"\"", "this is no file name.");
    else if (file.find('\n') != std::string::npos)
        complain(file, "a file name with a line feed cannot be handed to a translator.");
    else if (file.size() + doubled + sizeof("f \n") - 1 > CommandSize)
        complain(file, "the file name is too long to be handed to a translator.");
    else
        return true;
    return false;
}

/// Finds the translator for `file`. False, and says why, when there is none.
bool findTranslator(FileArgument const & file, TranslatorChoice & choice)
{
    choice = chooseTranslator(file.translator, file.path);
    if (choice.trouble.empty())
        return true;
    std::string const name = choice.name.empty() ? "" : " \"" + choice.name + "\"";
    complain(file.path, "the translator" + name + " " + choice.trouble + ".");
    return false;
}

/// How a run ended.
template <class Driver> RunOutcome outcomeOf(ExchangeRun<Driver> const & run)
{
    unsigned int const status = run.serverExitStatus();
    RunOutcome outcome = {Success, status, run.serverExitStatusMsg(), {}};
    if (status == transl_tk::ExitNoOptionsFile) {
        outcome.code = ExchangeFailed;
        outcome.explanation =
            "the options of the run could not be written to a temporary directory.";
    } else if (!run.exchangeFailure().empty()) {
        outcome.code = ExchangeFailed;
        outcome.explanation = run.exchangeFailure();
    } else if (!run.answered() && status == transl_tk::ExitCompleted) {
        outcome.code = NoAnswer;
        outcome.words.clear(); // nobody has said that it completed
        outcome.explanation = "the translator ended without an answer; nothing came of the run.";
    } else if (status != transl_tk::ExitCompleted) {
        outcome.code = status == transl_tk::ExitCancelled ? RunCancelled : RunFailed;
    }
    return outcome;
}

/// Says how a run ended; success on standard output.
void printOutcome(RunOutcome const & outcome, std::string const & file)
{
    std::string const words =
        outcome.words + " (exit status " + std::to_string(outcome.exitStatus) + ")";
    if (outcome.code == Success)
        std::printf("%s: %s\n", file.c_str(), words.c_str());
    else if (!outcome.words.empty())
        complain(file, words);
    if (!outcome.explanation.empty())
        complain(file, outcome.explanation);
}

/// One import and how it ended, in words. The model stays in the pool. False when there is no
/// translator for it.
bool import(CommonArguments const & arguments, RunReport const & report, FileArgument const & file,
            bool silentSuccess, RunOutcome & outcome)
{
    TranslatorChoice translator;
    if (!findTranslator(file, translator)) {
        outcome.code = TranslatorMissing;
        return false;
    }

    std::string const reportDirectory = report.directoryFor("import");
    DumpWatch const dumps(reportDirectory);
    ProgressDisplay::Style const style = ProgressDisplay::styleFor(arguments.quiet);
    auto display = std::make_unique<ProgressDisplay>(style, "Import");
    ImportRun run({file.path, translator, arguments.options, reportDirectory, *display});
    run.run();
    display.reset();
    dumps.print();

    printLog(run.model());
    outcome = outcomeOf(run);
    if (outcome.code != Success || !silentSuccess)
        printOutcome(outcome, file.path);
    return true;
}

void printModel(SubPool const & model, ImportOutput const & output)
{
    printSummary(model);
    printProductTree(output.tree);
    printPoints(model, output.points);
}

void printText(std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void printModelAsJson(std::string const & file, RunOutcome const & outcome, SubPool & model)
{
    JsonOutput json(printText);
    writeModelJson(file, outcome, model, json);
}

/// Writes the report of a run and says where it is; says why not when it cannot.
bool keepReport(std::string const & directory, ReportFormat format, std::string const & file,
                RunOutcome const & outcome)
{
    try {
        std::string const path = writeReportFile(directory, format, summariseRun(file, outcome));
        char const * const what = format == ReportFormat::Html ? "page" : "data";
        std::fprintf(stderr, "Report %s: %s\n", what, path.c_str());
        return true;
    } catch (translator_kit::Failure const & failure) {
        std::fprintf(stderr, "keld: %s\n", failure.what());
        return false;
    }
}

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
        store.storeVORN(chooseTranslator(file.translator, file.path).name, 0);
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

/// One export of what `fillModel` puts into the current sub-pool.
ExitCode exportModel(CommonArguments const & arguments, RunReport const & report,
                     FileArgument const & file, std::function<void()> fillModel)
{
    TranslatorChoice translator;
    if (!findTranslator(file, translator))
        return TranslatorMissing;

    std::string const reportDirectory = report.directoryFor("export");
    DumpWatch const dumps(reportDirectory);
    ProgressDisplay::Style const style = ProgressDisplay::styleFor(arguments.quiet);
    auto display = std::make_unique<ProgressDisplay>(style, "Export");
    ExportRun run({file.path, translator, arguments.options, reportDirectory, *display},
                  std::move(fillModel));
    run.run();
    if (run.answered())
        display->show(100);
    display.reset();
    dumps.print();
    RunOutcome const outcome = outcomeOf(run);
    printOutcome(outcome, file.path);
    return outcome.code;
}

/// Points on a cubic lattice of edge length 1, layer by layer.
void makeLattice(int count)
{
    int edge = 1;
    while (static_cast<long long>(edge) * edge * edge < count)
        ++edge;
    double const step = 1.0 / edge;
    for (int i = 0; i < count; ++i) {
        int const row = i / edge;
        int const layer = row / edge;
        transl_tk::Point3D::create(0, step * (i % edge), step * (row % edge), step * layer);
    }
}

} // namespace

ExitCode importFile(CommonArguments const & arguments, FileArgument const & file,
                    ImportOutput const & output)
{
    if (!isUsableName(file.path))
        return WrongUsage;
    PoolGuard const pool;
    RunReport const report(arguments.reportDirectory);
    RunOutcome outcome;
    if (!import(arguments, report, file, output.json, outcome))
        return outcome.code;

    SubPool & model = *Pool::getInstance()->currentSubPool();
    if (output.json)
        printModelAsJson(file.path, outcome, model);
    else if (outcome.code == Success)
        printModel(model, output);
    bool const kept = report.directory().empty() ||
                      keepReport(report.directory(), output.reportFormat, file.path, outcome);
    return kept || outcome.code != Success ? outcome.code : OutputFailed;
}

ExitCode importMetadata(CommonArguments const & arguments, FileArgument const & file,
                        MetadataOutput const & output, double patience)
{
    if (!isUsableName(file.path))
        return WrongUsage;
    if (!isUsableCatalogue(output.database, patience))
        return DatabaseFailed;
    PoolGuard const pool;
    RunReport const report(arguments.reportDirectory);
    CommonArguments withMetadata = arguments;
    withMetadata.options.emplace(withMetadata.options.begin(), translator_kit::MetadataOnlyOption,
                                 "true");
    RunOutcome outcome;
    if (!import(withMetadata, report, file, output.json, outcome))
        return outcome.code;

    MetadataStore store;
    takeMetadata(store, file.path, outcome);
    bool const kept = outcome.code != Success || output.database.empty() ||
                      keepMetadata(store, file, output.database, patience);
    SubPool & model = *Pool::getInstance()->currentSubPool();
    if (output.json) {
        JsonOutput json(printText);
        writeMetadataJson(file.path, outcome, store.content(), model, json);
    } else if (outcome.code == Success) {
        printMetadata(store.content());
    }
    return kept ? outcome.code : DatabaseFailed;
}

ExitCode listCatalogue(std::string const & database, CatalogueQuery const & query, double patience)
{
    std::vector<Condition> conditions;
    for (std::string const & text : query.conditions) {
        auto const condition = parseCondition(text);
        if (!condition) {
            complain(text, "this is no condition such as \"faces>1000\".");
            return WrongUsage;
        }
        conditions.push_back(*condition);
    }
    try {
        Catalogue catalogue(database, Catalogue::Access::Read,
                            std::chrono::milliseconds(milliseconds(patience)));
        auto const entries = catalogue.find(conditions);
        if (query.json) {
            JsonOutput json(printText);
            writeCatalogueJson(entries, json);
        } else {
            printCatalogue(entries);
        }
        return Success;
    } catch (DatabaseError const & failure) {
        complain(database, failure.what());
        return DatabaseFailed;
    }
}

ExitCode exportPoints(CommonArguments const & arguments, FileArgument const & file,
                      std::vector<std::array<double, 3>> const & points, int generated)
{
    if (!isUsableName(file.path))
        return WrongUsage;
    PoolGuard const pool;
    RunReport const report(arguments.reportDirectory);
    return exportModel(arguments, report, file, [&] {
        for (auto const & point : points)
            transl_tk::Point3D::create(0, point[0], point[1], point[2]);
        makeLattice(generated);
    });
}

ExitCode convert(CommonArguments const & arguments, FileArgument const & source,
                 FileArgument const & target)
{
    if (!isUsableName(source.path) || !isUsableName(target.path))
        return WrongUsage;
    std::error_code error;
    if (source.path == target.path ||
        std::filesystem::equivalent(source.path, target.path, error)) {
        complain(target.path, "source and target are the same file.");
        return WrongUsage;
    }

    PoolGuard const pool;
    RunReport const report(arguments.reportDirectory);
    RunOutcome imported;
    if (!import(arguments, report, source, false, imported) || imported.code != Success)
        return imported.code;
    printSummary(*Pool::getInstance()->currentSubPool());
    return exportModel(arguments, report, target, [&] {
        Pool::getInstance()->setCurrent(source.path);
        Pool::getInstance()->logger()->clear();
    });
}

ExitCode listTranslators()
{
    for (TranslatorChoice const & translator : allTranslators()) {
        std::string const command = translator.paths->calcExecCmd();
        std::printf("%-10s %-10s %s\n", translator.name.c_str(),
                    translator.trouble.empty() ? "usable" : "not usable",
                    (translator.trouble.empty() ? command : translator.trouble).c_str());
    }
    return Success;
}

} // namespace keld
