#ifndef KELD_TOOLS_IMPORT_FILE_H
#define KELD_TOOLS_IMPORT_FILE_H

#include "exit_code.h"
#include "file_result.h"
#include "run_arguments.h"

namespace keld {

/// Imports `file`, prints what arrived and, with a report directory, writes the report of the run.
ExitCode importFile(CommonArguments const & arguments, FileArgument const & file,
                    ImportOutput const & output);

/// The same for one of several files, of which it prints no more than messages and, with
/// `printTree`, the product tree.
FileResult importOneOfSeveral(CommonArguments const & arguments, FileArgument const & file,
                              ImportOutput const & output, bool printTree);

} // namespace keld

#endif
