#include "commands.h"

#include "model_summary.h"
#include "run_report.h"

#include <keld-transl/model/point3d.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/reporting/logger_policy.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace keld {

using transl_tk::Pool;

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

/// Says how a run ended, and turns it into an exit code.
template <class Driver> ExitCode conclude(ExchangeRun<Driver> const & run, std::string const & file)
{
    unsigned int const status = run.serverExitStatus();
    std::string const words =
        run.serverExitStatusMsg() + " (exit status " + std::to_string(status) + ")";
    if (status == transl_tk::ExitNoOptionsFile) {
        complain(file, words);
        complain(file, "the options of the run could not be written to a temporary directory.");
        return ExchangeFailed;
    }
    if (!run.exchangeFailure().empty()) {
        complain(file, words);
        complain(file, run.exchangeFailure());
        return ExchangeFailed;
    }
    if (!run.answered() && status == transl_tk::ExitCompleted) {
        complain(file, "the translator ended without an answer; nothing came of the run.");
        return NoAnswer;
    }
    if (status == transl_tk::ExitCompleted) {
        std::printf("%s: %s\n", file.c_str(), words.c_str());
        return Success;
    }
    complain(file, words);
    return status == transl_tk::ExitCancelled ? RunCancelled : RunFailed;
}

/// One import; the model stays in the pool.
ExitCode import(CommonArguments const & arguments, RunReport const & report,
                FileArgument const & file, long long pointLimit)
{
    TranslatorChoice translator;
    if (!findTranslator(file, translator))
        return TranslatorMissing;

    std::string const reportDirectory = report.directoryFor("import");
    DumpWatch const dumps(reportDirectory);
    ProgressDisplay::Style const style = ProgressDisplay::styleFor(arguments.quiet);
    auto display = std::make_unique<ProgressDisplay>(style, "Import");
    ImportRun run({file.path, translator, arguments.options, reportDirectory, *display});
    run.run();
    display.reset();
    dumps.print();

    printLog(run.model());
    ExitCode const code = conclude(run, file.path);
    if (code == Success) {
        printSummary(run.model());
        printPoints(run.model(), pointLimit);
    }
    return code;
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
    return conclude(run, file.path);
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
                    long long pointLimit)
{
    if (!isUsableName(file.path))
        return WrongUsage;
    PoolGuard const pool;
    RunReport const report(arguments.reportDirectory);
    return import(arguments, report, file, pointLimit);
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
    ExitCode const imported = import(arguments, report, source, 0);
    if (imported != Success)
        return imported;
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
