#include "commands/commands.h"
#include "exit_code.h"
#include "installation.h"
#include "interrupt.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <filesystem>

namespace {

constexpr char const * Description =
    "Imports and exports CAD files through translators, which run as processes of their own.\n"
    "What a file holds names the translator, and where that cannot be told, or the file is to be\n"
    "written, its suffix: \"part.xyz\" goes through the installed keld_xyz.sh.";

constexpr char const * ExitCodes = R"(Exit codes:
  0  success
  1  the run failed; as a rule the translator says why
  2  wrong command line or file name
  3  no translator for the file, or one that cannot be started
  4  the translator ended without an answer
  5  options or model could not be handed over (temporary directory, shared memory)
  6  the run was cancelled
  7  output could not be written
  8  a database of metadata could not be used
  9  the translator was ended for --time-limit or --memory-limit
  10 some of several files completed and others did not
When none of several files completes, the code is the one that they share, or else 1.)";

int runCommandLine(int argc, char ** argv)
{
    CLI::App app(Description, "keld");
    app.footer(ExitCodes);
    app.require_subcommand(1);
    app.set_version_flag("--version", "keld 23.0.0");

    keld::ChosenCommand command;
    bool endsByItself = false;
    keld::addImportCommand(app, command, endsByItself);
    keld::addInfoCommand(app, command);
    keld::addCatalogueCommand(app, command);
    keld::addExportCommand(app, command);
    keld::addConvertCommand(app, command);
    keld::addTranslatorsCommand(app, command);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const & error) {
        return app.exit(error) == 0 ? keld::Success : keld::WrongUsage;
    }

    keld::chooseInstallation();
    if (!endsByItself)
        keld::cleanUpOnInterrupt();
    return command();
}

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
