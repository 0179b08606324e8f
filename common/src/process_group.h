#ifndef KELD_COMMON_PROCESS_GROUP_H
#define KELD_COMMON_PROCESS_GROUP_H

#include <chrono>
#include <sys/types.h>

namespace keld_common {

/// Waits until no process of `group` lives or `limit` has come; answers which. One that has ended
/// and that nobody has reaped does not live. Processes of a group need not be children of this one,
/// so that nothing tells when they end.
bool waitForEndOfGroup(pid_t group, std::chrono::steady_clock::time_point limit);

} // namespace keld_common

#endif
