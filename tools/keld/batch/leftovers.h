#ifndef KELD_TOOLS_BATCH_LEFTOVERS_H
#define KELD_TOOLS_BATCH_LEFTOVERS_H

#include <set>
#include <sys/types.h>

namespace keld {

// For a process that starts workers, which is to inherit the translators of those that are killed.

/// Makes this process inherit what its workers leave behind.
void inheritTranslators();

/// Ends all children of this process but `workers`, and reaps them: first by SIGTERM, which leaves
/// a translator the time to clean up, then by SIGKILL.
void endTranslators(std::set<pid_t> const & workers);

/// Removes the options file, other temporary files named after it and the segment of a worker that
/// was killed and reaped, after its translator is gone.
void removeLeftovers(pid_t worker);

} // namespace keld

#endif
