#ifndef KELD_TESTS_KELD_JOBS_PROGRAM_H
#define KELD_TESTS_KELD_JOBS_PROGRAM_H

#include "process/keld_program.h"

#include <string>
#include <vector>

namespace tests {

/// `text` with " T" for each time, and for the title of their column, with the blanks before it.
std::string withoutTimes(std::string const & text);

/// The processes that `process` has started and that have not been reaped.
std::vector<pid_t> childrenOf(pid_t process);

/// Puts a shell script in the place of the script that starts translator `name`; in it,
/// "$TRANSLATOR" is the executable.
void wrapTranslator(KeldProgram const & keld, std::string const & name, std::string const & script);

/// What a terminal of `columns` columns shows after `bytes`, without blanks at the ends of lines.
/// Knows what the program draws with; anything else is shown as it comes.
std::string screenAfter(std::string const & bytes, std::size_t columns);

/// What the program writes on standard error to a terminal of `columns` columns.
std::string writtenToTerminal(KeldProgram & keld, unsigned short columns,
                              std::vector<std::string> const & arguments);

} // namespace tests

#endif
