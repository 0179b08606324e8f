#ifndef KELD_COMMON_POLLING_H
#define KELD_COMMON_POLLING_H

#include <algorithm>
#include <chrono>
#include <limits>

namespace keld_common {

/// The time from now to `limit` as poll takes it: rounded up, 0 when it is over, and -1 for the
/// latest time point, which means no limit.
inline int millisecondsUntil(std::chrono::steady_clock::time_point limit)
{
    using std::chrono::steady_clock;
    if (limit == steady_clock::time_point::max())
        return -1;
    auto const now = steady_clock::now();
    if (limit <= now)
        return 0;
    auto const rest = std::chrono::ceil<std::chrono::milliseconds>(limit - now).count();
    return static_cast<int>(std::min<decltype(rest)>(rest, std::numeric_limits<int>::max()));
}

} // namespace keld_common

#endif
