#ifndef KELD_TOOLS_COMMANDS_COMMANDS_H
#define KELD_TOOLS_COMMANDS_COMMANDS_H

#include "batch/batch.h"
#include "exit_code.h"
#include "run_arguments.h"

#include <array>
#include <string>
#include <vector>

namespace keld {

struct InfoArguments
{
    CommonArguments common;
    FileArgument file;
    ImportOutput output;
    bool metadata = false; ///< the metadata instead of the model
    std::string database;  ///< the catalogue to store it in; empty for none
    double patience = 0;   ///< how long to wait at most for others that use it, in seconds
};

struct CatalogueArguments
{
    std::string database;
    std::vector<std::string> conditions; ///< as `parseCondition` reads them
    bool json = false;
    double patience = 0; ///< seconds
};

struct ExportArguments
{
    CommonArguments common;
    FileArgument file;
    std::vector<std::array<double, 3>> points;
    int generated = 0; ///< so many further points
};

struct ConvertArguments
{
    CommonArguments common;
    FileArgument source;
    FileArgument target;
};

/// Imports a file, prints what arrived and, with a report directory, writes the report of the run;
/// or imports several, each in a process of its own, and prints a table.
ExitCode runImport(BatchArguments const & arguments);

/// The same for programs too: the model as JSON, or the file's metadata alone, which may go into a
/// catalogue.
ExitCode runInfo(InfoArguments const & arguments);

/// Prints the entries of a catalogue.
ExitCode runCatalogue(CatalogueArguments const & arguments);

/// Exports points.
ExitCode runExport(ExportArguments const & arguments);

/// Imports a file and exports the model to another one.
ExitCode runConvert(ConvertArguments const & arguments);

/// Lists the translators, where they are and whether they can be used.
ExitCode runTranslators();

} // namespace keld

#endif
