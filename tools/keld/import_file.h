#ifndef KELD_TOOLS_IMPORT_FILE_H
#define KELD_TOOLS_IMPORT_FILE_H

#include "commands/arguments.h"
#include "exit_code.h"

namespace keld {

/// Imports `file`, prints what arrived and, with a report directory, writes the report of the run.
ExitCode importFile(CommonArguments const & arguments, FileArgument const & file,
                    ImportOutput const & output);

} // namespace keld

#endif
