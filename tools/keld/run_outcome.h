#ifndef KELD_TOOLS_RUN_OUTCOME_H
#define KELD_TOOLS_RUN_OUTCOME_H

#include "exit_code.h"

#include <string>

namespace keld {

/// How a run ended.
struct RunOutcome
{
    ExitCode code = Success;
    unsigned int exitStatus = 0;
    std::string words;       ///< the client's words for the exit status
    std::string explanation; ///< what else there is to say, a sentence; may be empty
};

} // namespace keld

#endif
