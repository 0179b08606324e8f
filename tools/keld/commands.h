#ifndef KELD_TOOLS_COMMANDS_H
#define KELD_TOOLS_COMMANDS_H

#include "exchange_run.h"
#include "exit_code.h"
#include "product_tree.h"
#include "report_file.h"

#include <array>
#include <string>
#include <vector>

namespace keld {

/// What the command line says for every run.
struct CommonArguments
{
    bool quiet = false;
    std::string reportDirectory;
    std::vector<OptionText> options;
};

/// A file and the name of its translator; an empty name leaves that to the file's suffix.
struct FileArgument
{
    std::string path;
    std::string translator;
};

/// What an import prints and keeps.
struct ImportOutput
{
    long long points = 0; ///< the first so many are printed
    TreeSettings tree;
    bool json = false; ///< the whole model as JSON instead of all that is printed otherwise
    ReportFormat reportFormat = ReportFormat::Html;
};

/// What is to be done with the metadata of a file.
struct MetadataOutput
{
    bool json = false;    ///< print it as JSON instead of a table
    std::string database; ///< the catalogue to store it in; empty for none
};

/// What a catalogue is asked.
struct CatalogueQuery
{
    std::vector<std::string> conditions; ///< as `parseCondition` reads them
    bool json = false;
};

/// Imports `file`, prints what arrived and, with a report directory, writes the report of the run.
ExitCode importFile(CommonArguments const & arguments, FileArgument const & file,
                    ImportOutput const & output);

/// Imports the metadata of `file` alone, prints it and, with a database, stores it there, waiting
/// at most `patience` seconds for other programs.
ExitCode importMetadata(CommonArguments const & arguments, FileArgument const & file,
                        MetadataOutput const & output, double patience);

/// Prints the entries of the catalogue `database` that meet the conditions.
ExitCode listCatalogue(std::string const & database, CatalogueQuery const & query, double patience);

/// Exports `points` and then `generated` further points to `file`.
ExitCode exportPoints(CommonArguments const & arguments, FileArgument const & file,
                      std::vector<std::array<double, 3>> const & points, int generated);

/// Imports `source` and exports the model to `target`.
ExitCode convert(CommonArguments const & arguments, FileArgument const & source,
                 FileArgument const & target);

/// Lists the translators, where they are and whether they can be used.
ExitCode listTranslators();

} // namespace keld

#endif
