#include "polling.h"
#include "process_group.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <sstream>
#include <string>
#include <unistd.h>

namespace keld_common {

namespace {

/// What the system says of a process, "" when there is none.
std::string statusOf(char const * process)
{
    std::string const path = std::string("/proc/") + process + "/stat";
    int const descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor == -1)
        return {};
    char text[1024];
    ssize_t const count = ::read(descriptor, text, sizeof(text));
    ::close(descriptor);
    return {text, static_cast<size_t>(std::max<ssize_t>(count, 0))};
}

/// Whether the process is one of `group` and has not ended with all its threads.
bool livesIn(pid_t group, char const * process)
{
    std::string const status = statusOf(process);
    // The name of the program stands in parentheses, and may hold anything.
    size_t const name = status.rfind(')');
    if (name == std::string::npos)
        return false;
    // Behind it: state, parent, group; the number of threads is the 18th word.
    constexpr int Between = 14;
    std::istringstream words(status.substr(name + 1));
    char state = 0;
    int parent = 0;
    int ownGroup = 0;
    words >> state >> parent >> ownGroup;
    std::string word;
    for (int i = 0; i < Between; ++i)
        words >> word;
    int threads = 0;
    words >> threads;
    bool const ended = (state == 'Z' || state == 'X') && threads <= 1;
    return ownGroup == group && !ended;
}

bool isProcess(dirent const & entry)
{
    return entry.d_name[0] >= '1' && entry.d_name[0] <= '9';
}

/// Whether a process of the group lives. Without the system's list, one that has ended counts until
/// it is reaped.
bool groupLives(pid_t group)
{
    if (::kill(-group, 0) == -1 && errno == ESRCH)
        return false;
    std::unique_ptr<DIR, int (*)(DIR *)> const processes(::opendir("/proc"), &::closedir);
    if (processes == nullptr)
        return true;
    while (dirent const * const entry = ::readdir(processes.get())) {
        if (isProcess(*entry) && livesIn(group, entry->d_name))
            return true;
    }
    return false;
}

} // namespace

bool waitForEndOfGroup(pid_t group, std::chrono::steady_clock::time_point limit)
{
    int pause = 1;
    while (groupLives(group)) {
        int const rest = millisecondsUntil(limit);
        if (rest == 0)
            return false;
        ::poll(nullptr, 0, std::min(pause, rest));
        pause = std::min(2 * pause, 20);
    }
    return true;
}

} // namespace keld_common
