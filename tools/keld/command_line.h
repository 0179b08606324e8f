#ifndef KELD_TOOLS_COMMAND_LINE_H
#define KELD_TOOLS_COMMAND_LINE_H

#include "exit_code.h"

#include <functional>

namespace keld {

/// The command that a command line names, with its arguments, ready to run. Where the command line
/// asks for help or is wrong, this is said, and the command does no more than give the exit code.
std::function<ExitCode()> parseCommandLine(int argc, char ** argv);

} // namespace keld

#endif
