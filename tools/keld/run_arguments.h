#ifndef KELD_TOOLS_RUN_ARGUMENTS_H
#define KELD_TOOLS_RUN_ARGUMENTS_H

#include "exchange_run.h"
#include "product_tree.h"
#include "report_file.h"

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

} // namespace keld

#endif
