#ifndef KELD_TRANSLATOR_KIT_LOG_H
#define KELD_TRANSLATOR_KIT_LOG_H

#include <string>

namespace translator_kit {

/// The list of `Pool::logger()` that holds what a run has to say to the user.
inline constexpr int UserLog = 1;

/// Prints one line on standard error behind the translator's name.
void printLine(std::string const & translator, std::string const & words);

/// Prints the log of the current model in the same way.
void printLog(std::string const & translator);

} // namespace translator_kit

#endif
