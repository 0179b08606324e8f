#include "import_file.h"

#include "json_output.h"
#include "model_json.h"
#include "model_summary.h"
#include "run_summary.h"
#include "transfer.h"

#include <keld-transl/model/pool.h>
#include <keld-translator-kit/translator.h>

#include <cstdio>

namespace keld {

using transl_tk::Pool;
using transl_tk::SubPool;

namespace {

void printModel(SubPool const & model, ImportOutput const & output)
{
    printSummary(model);
    printProductTree(output.tree);
    printPoints(model, output.points);
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

} // namespace

ExitCode importFile(CommonArguments const & arguments, FileArgument const & file,
                    ImportOutput const & output)
{
    if (!isUsableName(file.path))
        return WrongUsage;
    PoolGuard const pool;
    RunReport const report(arguments.reportDirectory);
    RunOutcome outcome;
    if (!importModel(arguments, report, file, output.json, outcome))
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

} // namespace keld
