#ifndef KELD_TOOLS_BATCH_BATCH_H
#define KELD_TOOLS_BATCH_BATCH_H

#include "exit_code.h"
#include "run_arguments.h"

#include <string>
#include <vector>

namespace keld {

/// What the command line says about the import of several files.
struct BatchArguments
{
    CommonArguments common;
    std::vector<std::string> files;
    std::string translator; ///< for all files; empty leaves it to their suffixes
    ImportOutput output;
    bool tree = false; ///< print the product tree of each file
    std::size_t jobs = 1;
};

/// Imports each file in a process of its own, `jobs` at a time, shows how far they are, prints a
/// table of what came of them, and answers for all of them: success, `SomeFailed`, or for none the
/// code that they share, `RunFailed` when they share none. When a signal ends this process, it
/// ends the others first. This process must have no thread but one.
ExitCode importFiles(BatchArguments const & arguments);

/// The folders below a report directory for files of these paths: their names, with a number where
/// a name comes again.
std::vector<std::string> reportFolders(std::vector<std::string> const & files);

} // namespace keld

#endif
