#include "import_file.h"

#include "facet_summary.h"
#include "json_output.h"
#include "model_json.h"
#include "model_summary.h"
#include "run_summary.h"
#include "transfer.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/product/hierarchy.h>
#include <keld-translator-kit/translator.h>

#include <algorithm>
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

/// Writes the report of a run; its path, or an empty one after it has said why it could not.
std::string keepReport(std::string const & directory, ReportFormat format, std::string const & file,
                       RunOutcome const & outcome)
{
    try {
        return writeReportFile(directory, format, summariseRun(file, outcome));
    } catch (translator_kit::Failure const & failure) {
        std::fprintf(stderr, "keld: %s\n", failure.what());
        return {};
    }
}

/// The same, and says where the report is.
bool keepAndNameReport(std::string const & directory, ReportFormat format, std::string const & file,
                       RunOutcome const & outcome)
{
    std::string const path = keepReport(directory, format, file, outcome);
    char const * const what = format == ReportFormat::Html ? "page" : "data";
    if (!path.empty())
        std::fprintf(stderr, "Report %s: %s\n", what, path.c_str());
    return !path.empty();
}

/// The last error of the log, which as a rule is why the run failed.
std::string lastError(SubPool & model)
{
    std::string text;
    for (LogLine const & line : logLines(model)) {
        if (line.type == cad::ILoggerPolicy::ErrorLine)
            text = line.text;
    }
    return text;
}

/// Why a run is no success: the words for its end, what the host and what the translator has to
/// say.
std::string reasonOf(RunOutcome const & outcome, std::string const & error)
{
    if (outcome.code == Success)
        return {};
    std::string reason = outcome.words;
    if (!reason.empty())
        reason += " (exit status " + std::to_string(outcome.exitStatus) + ")";
    for (std::string const & more : {outcome.explanation, error}) {
        if (!reason.empty() && !more.empty())
            reason += ": ";
        reason += more;
    }
    return reason;
}

unsigned long long partsIn(SubPool const & model)
{
    unsigned long long parts = 0;
    model.m_Hierarchies.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        auto * const hierarchy = static_cast<transl_tk::Hierarchy *>(entity);
        parts += hierarchy->getHierarchyType() == transl_tk::Hierarchy::Part;
    });
    return parts;
}

void countModel(SubPool const & model, FileResult & result)
{
    auto & counts = result.counts;
    counts[Parts] = partsIn(model);
    counts[Bodies] = model.m_Bodies.m_Entities.size();
    counts[Faces] = model.m_Faces.m_Entities.size();
    counts[Triangles] = trianglesIn(model);
    bool const holdsShapes = std::any_of(counts.begin(), counts.end(),
                                         [](unsigned long long count) { return count > 0; });
    counts[Points] = holdsShapes ? 0 : model.m_Points.m_Entities.size();
    for (SummaryEntry const & entry : reportEntries(model))
        counts[Lost] += entry.type == Error;
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
    bool const kept =
        report.directory().empty() ||
        keepAndNameReport(report.directory(), output.reportFormat, file.path, outcome);
    return kept || outcome.code != Success ? outcome.code : OutputFailed;
}

FileResult importOneOfSeveral(CommonArguments const & arguments, FileArgument const & file,
                              ImportOutput const & output, bool printTree)
{
    FileResult result;
    if (!isUsableName(file.path)) {
        result.code = WrongUsage;
        result.reason = nameTrouble(file.path);
        return result;
    }
    PoolGuard const pool;
    RunReport const report(arguments.reportDirectory, RunReport::Silent);
    RunOutcome outcome;
    bool const ran = importModel(arguments, report, file, true, outcome);
    result.code = outcome.code;
    if (!ran) {
        result.reason = reasonOf(outcome, "");
        return result;
    }

    SubPool & model = *Pool::getInstance()->currentSubPool();
    result.reason = reasonOf(outcome, lastError(model));
    countModel(model, result);
    if (outcome.code == Success && printTree)
        printProductTree(output.tree);
    if (report.directory().empty())
        return result;
    result.report = keepReport(report.directory(), output.reportFormat, file.path, outcome);
    if (result.report.empty() && outcome.code == Success) {
        result.code = OutputFailed;
        result.reason = "the report of the run could not be written.";
    }
    return result;
}

} // namespace keld
