#include "transfer.h"

#include "exchange_run.h"
#include "model_summary.h"
#include "translator_end.h"

#include <keld-common/channel.h>
#include <keld-transl/model/pool.h>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace keld {

using transl_tk::Pool;

namespace {

constexpr std::size_t CommandSize = 4096;

/// Says what is to be said about the translator that was chosen for `file`. False when it cannot be
/// used; then that is the outcome.
bool isUsable(TranslatorChoice const & choice, std::string const & file, RunOutcome & outcome)
{
    if (!choice.remark.empty())
        complain(file, choice.remark);
    if (choice.trouble.empty())
        return true;
    std::string const name = choice.name.empty() ? "" : " \"" + choice.name + "\"";
    outcome.code = TranslatorMissing;
    outcome.explanation = "the translator" + name + " " + choice.trouble + ".";
    complain(file, outcome.explanation);
    for (TriedPath const & tried : choice.tried)
        std::fprintf(stderr, "    %s: %s\n", tried.path.c_str(), tried.finding.c_str());
    return false;
}

/// How a run ended.
template <class Driver> RunOutcome outcomeOf(ExchangeRun<Driver> & run)
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
        outcome.code = run.exceededLimit() ? LimitExceeded : NoAnswer;
        outcome.words.clear(); // nobody has said that it completed
        outcome.explanation = run.wordsForEnd();
    } else if (status != transl_tk::ExitCompleted) {
        outcome.code = status == transl_tk::ExitCancelled ? RunCancelled : RunFailed;
    }
    return outcome;
}

/// Says how to learn more of a crash that was not looked into.
void printCrashHint(RunOutcome const & outcome, RunReport const & report, std::string const & file)
{
    if (outcome.code == NoAnswer && report.directory().empty() &&
        isCrash(ServerGetEnding(KELD_CHANNEL_NUMBER)))
        complain(file, "--report DIR keeps a crash report of such a run.");
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

} // namespace

PoolGuard::~PoolGuard()
{
    while (Pool::hasInstance())
        Pool::destruct();
}

void complain(std::string const & subject, std::string const & words)
{
    std::fprintf(stderr, "keld: %s: %s\n", subject.c_str(), words.c_str());
}

std::string nameTrouble(std::string const & file)
{
    auto const doubled = static_cast<std::size_t>(std::count(file.begin(), file.end(), '%'));
    if (file.empty())
        return "this is no file name.";
    if (file.find('\n') != std::string::npos)
        return "a file name with a line feed cannot be handed to a translator.";
    if (file.size() + doubled + sizeof("f \n") - 1 > CommandSize)
        return "the file name is too long to be handed to a translator.";
    return {};
}

bool isUsableName(std::string const & file)
{
    std::string const trouble = nameTrouble(file);
    if (!trouble.empty())
        complain(file.empty() ? "\"\"" : file, trouble);
    return trouble.empty();
}

bool importModel(CommonArguments const & arguments, RunReport const & report,
                 FileArgument const & file, bool silentSuccess, RunOutcome & outcome)
{
    TranslatorChoice const translator = chooseForImport(file.translator, file.path);
    if (!isUsable(translator, file.path, outcome))
        return false;

    std::string const reportDirectory = report.directoryFor("import");
    DumpWatch const dumps(reportDirectory);
    ProgressDisplay::Style const style = ProgressDisplay::styleFor(arguments.quiet);
    auto display = std::make_unique<ProgressDisplay>(style, "Import");
    ImportRun run(
        {file.path, translator, arguments.options, arguments.limits, reportDirectory, *display});
    run.run();
    display.reset();
    dumps.print();

    printLog(run.model());
    outcome = outcomeOf(run);
    if (outcome.code != Success || !silentSuccess)
        printOutcome(outcome, file.path);
    printCrashHint(outcome, report, file.path);
    return true;
}

ExitCode exportModel(CommonArguments const & arguments, RunReport const & report,
                     FileArgument const & file, std::function<void()> fillModel)
{
    TranslatorChoice const translator = chooseForExport(file.translator, file.path);
    RunOutcome outcome;
    if (!isUsable(translator, file.path, outcome))
        return outcome.code;

    std::string const reportDirectory = report.directoryFor("export");
    DumpWatch const dumps(reportDirectory);
    ProgressDisplay::Style const style = ProgressDisplay::styleFor(arguments.quiet);
    auto display = std::make_unique<ProgressDisplay>(style, "Export");
    ExportRun run(
        {file.path, translator, arguments.options, arguments.limits, reportDirectory, *display},
        std::move(fillModel));
    run.run();
    if (run.answered())
        display->show(100);
    display.reset();
    dumps.print();
    outcome = outcomeOf(run);
    printOutcome(outcome, file.path);
    printCrashHint(outcome, report, file.path);
    return outcome.code;
}

} // namespace keld
