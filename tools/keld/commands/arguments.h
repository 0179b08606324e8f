#ifndef KELD_TOOLS_COMMANDS_ARGUMENTS_H
#define KELD_TOOLS_COMMANDS_ARGUMENTS_H

#include "exchange_run.h"
#include "product_tree.h"
#include "report_file.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <string>
#include <vector>

namespace keld {

/// What the command line says for every run.
struct CommonArguments
{
    bool quiet = false;
    std::string reportDirectory;
    std::vector<OptionText> options;
    Limits limits;
};

/// A file and the name of its translator; an empty name leaves that to what the file holds
/// or is called.
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

// Each adds arguments to a command. What they fill must live as long as the command.

void addCommonArguments(CLI::App & command, CommonArguments & arguments);

/// The file, called `name`, and the option `translator`, which names its translator.
void addFileArgument(CLI::App & command, std::string const & name, std::string const & translator,
                     FileArgument & file, std::string const & description);

/// What is to be printed and kept of an import.
void addOutputArguments(CLI::App & command, ImportOutput & output);

/// How many seconds to wait at most for other users of a database.
void addWaitArgument(CLI::App & command, double & patience);

/// The patience that a command starts with, in seconds.
double defaultPatience();

std::chrono::milliseconds milliseconds(double seconds);

} // namespace keld

#endif
