#ifndef KELD_TOOLS_COMMANDS_COMMANDS_H
#define KELD_TOOLS_COMMANDS_COMMANDS_H

#include "exit_code.h"

#include <CLI/CLI.hpp>
#include <functional>

namespace keld {

/// The command that the command line names, with its arguments, ready to run.
using ChosenCommand = std::function<ExitCode()>;

// Each adds a command to the command line. `chosen` must live as long as `app`; when a command line
// with the command is parsed, it becomes that command.

/// Imports a file, prints what arrived and, with a report directory, writes the report of the run;
/// or imports several. `endsByItself`, which must live as long, becomes true when the command sees
/// to the signals that end the program.
void addImportCommand(CLI::App & app, ChosenCommand & chosen, bool & endsByItself);

/// The same for programs too: the model as JSON, or the file's metadata alone, which may go into a
/// catalogue.
void addInfoCommand(CLI::App & app, ChosenCommand & chosen);

/// Prints the entries of a catalogue.
void addCatalogueCommand(CLI::App & app, ChosenCommand & chosen);

/// Exports points.
void addExportCommand(CLI::App & app, ChosenCommand & chosen);

/// Imports a file and exports the model to another one.
void addConvertCommand(CLI::App & app, ChosenCommand & chosen);

/// Lists the translators, where they are and whether they can be used.
void addTranslatorsCommand(CLI::App & app, ChosenCommand & chosen);

} // namespace keld

#endif
