#include "child_process.h"
#include "polling.h"
#include "process_group.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace keld_common {

namespace {

/// How long what was killed may take to let go of its memory.
constexpr std::chrono::seconds s_TimeToDie{2};

/// What posix_spawn is told, freed at the end of the scope.
class SpawnSettings
{
public:
    SpawnSettings() = default;
    SpawnSettings(SpawnSettings const &) = delete;
    SpawnSettings & operator=(SpawnSettings const &) = delete;

    ~SpawnSettings()
    {
        if (m_HasActions)
            ::posix_spawn_file_actions_destroy(&m_Actions);
        if (m_HasAttributes)
            ::posix_spawnattr_destroy(&m_Attributes);
    }

    /// Answers 0 or the number of an error.
    int fill(int commands, int frames)
    {
        int error = ::posix_spawn_file_actions_init(&m_Actions);
        m_HasActions = error == 0;
        if (error == 0) {
            error = ::posix_spawnattr_init(&m_Attributes);
            m_HasAttributes = error == 0;
        }
        if (error == 0)
            error = ::posix_spawn_file_actions_adddup2(&m_Actions, commands, ChildCommands);
        if (error == 0)
            error = ::posix_spawn_file_actions_adddup2(&m_Actions, frames, ChildFrames);
        // Descriptors of the host that were opened without close-on-exec stay behind as well.
        if (error == 0)
            error = ::posix_spawn_file_actions_addclosefrom_np(&m_Actions, FirstPrivate);
        sigset_t signals;
        ::sigfillset(&signals);
        if (error == 0)
            error = ::posix_spawnattr_setsigdefault(&m_Attributes, &signals);
        ::sigemptyset(&signals);
        if (error == 0)
            error = ::posix_spawnattr_setsigmask(&m_Attributes, &signals);
        if (error == 0)
            error = ::posix_spawnattr_setpgroup(&m_Attributes, 0);
        if (error == 0)
            error = ::posix_spawnattr_setflags(&m_Attributes, POSIX_SPAWN_SETSIGDEF |
                                                                  POSIX_SPAWN_SETSIGMASK |
                                                                  POSIX_SPAWN_SETPGROUP);
        return error;
    }

    posix_spawn_file_actions_t const * actions() const { return &m_Actions; }
    posix_spawnattr_t const * attributes() const { return &m_Attributes; }

private:
    posix_spawn_file_actions_t m_Actions;
    posix_spawnattr_t m_Attributes;
    bool m_HasActions = false;
    bool m_HasAttributes = false;
};

std::vector<char *> pointersTo(std::vector<std::string> const & texts)
{
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string const & text : texts)
        pointers.push_back(const_cast<char *>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

int openProcess(pid_t process)
{
    // Close-on-exec by nature.
    return static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
}

/// Whether `descriptor` is that of a child of this process, ended or not.
bool isChild(int descriptor)
{
    siginfo_t info = {};
    return ::waitid(P_PIDFD, static_cast<id_t>(descriptor), &info, WEXITED | WNOHANG | WNOWAIT) ==
           0;
}

} // namespace

bool ChildProcess::start(StartableCommand const & command,
                         std::vector<std::string> const & environment, int commands, int frames)
{
    SpawnSettings settings;
    auto const arguments = pointersTo(command.m_Words);
    auto const variables = pointersTo(environment);
    pid_t process = 0;
    int error = settings.fill(commands, frames);
    if (error == 0)
        error = ::posix_spawn(&process, command.m_File.c_str(), settings.actions(),
                              settings.attributes(), arguments.data(), variables.data());
    if (error != 0) {
        errno = error;
        return false;
    }
    std::lock_guard const lock(m_Mutex);
    m_Ending = {};
    m_Group = process;
    m_Descriptor = openProcess(process);
    if (m_Descriptor != -1 && isChild(m_Descriptor))
        return true;
    // A host that ignores SIGCHLD, or that waits for any child, may have reaped it already. A
    // process that has the number now and is no child of this one leads no group that is meant
    // here.
    if (m_Descriptor != -1) {
        ::close(std::exchange(m_Descriptor, -1));
        m_Group = 0;
        return true;
    }
    if (errno == ESRCH) {
        groupIsEmpty();
        return true;
    }
    error = errno;
    signalAll(SIGKILL);
    while (::waitpid(process, nullptr, 0) == -1 && errno == EINTR) {
    }
    m_Group = 0;
    errno = error;
    return false;
}

bool ChildProcess::hasEnded()
{
    return waitUntil(Clock::time_point::min());
}

bool ChildProcess::waitUntil(Clock::time_point limit)
{
    while (m_Descriptor != -1) {
        pollfd process = {m_Descriptor, POLLIN, 0};
        int const ready = ::poll(&process, 1, millisecondsUntil(limit));
        if (ready > 0)
            onEnd();
        else if (ready == 0 || errno != EINTR)
            return false;
    }
    return true;
}

/// Takes the exit status, if nobody has, which gives the process number back; so the group is
/// looked at now, while its number cannot mean another one.
void ChildProcess::onEnd()
{
    std::lock_guard const lock(m_Mutex);
    siginfo_t info = {};
    while (::waitid(P_PIDFD, static_cast<id_t>(m_Descriptor), &info, WEXITED) == -1 &&
           errno == EINTR) {
    }
    if (m_Ending.how == KELD_ENDING_UNKNOWN && info.si_pid != 0)
        m_Ending = {info.si_code == CLD_EXITED ? KELD_ENDING_EXITED : KELD_ENDING_SIGNALLED,
                    info.si_status};
    ::close(std::exchange(m_Descriptor, -1));
    groupIsEmpty();
}

bool ChildProcess::groupIsEmpty()
{
    if (m_Group != 0 && ::kill(-m_Group, 0) == -1 && errno == ESRCH)
        m_Group = 0;
    return m_Group == 0;
}

/// Waits for processes that the child has left behind in its group.
bool ChildProcess::waitForGroup(Clock::time_point limit)
{
    bool const gone = m_Group == 0 || waitForEndOfGroup(m_Group, limit);
    std::lock_guard const lock(m_Mutex);
    if (gone)
        m_Group = 0;
    return gone;
}

void ChildProcess::signalAll(int signal)
{
    if (m_Group != 0)
        ::kill(-m_Group, signal);
    // The child may have left its group.
    if (m_Descriptor != -1)
        ::syscall(SYS_pidfd_send_signal, m_Descriptor, signal, nullptr, 0);
}

void ChildProcess::end(Clock::time_point limit, std::chrono::milliseconds patience)
{
    if (waitUntil(limit) && waitForGroup(limit))
        return;
    if (m_Descriptor != -1)
        m_Ending = {KELD_ENDING_STOPPED, 0};
    signalAll(SIGTERM);
    limit = Clock::now() + patience;
    if (waitUntil(limit) && waitForGroup(limit))
        return;
    signalAll(SIGKILL);
    waitUntil(Clock::time_point::max());
    // What was killed lets go of all that it held a moment later.
    waitForGroup(Clock::now() + s_TimeToDie);
    std::lock_guard const lock(m_Mutex);
    m_Group = 0;
}

void ChildProcess::endNow(std::chrono::milliseconds patience)
{
    pid_t group = 0;
    int process = -1;
    {
        std::lock_guard const lock(m_Mutex);
        group = m_Group;
        if (m_Descriptor != -1)
            process = ::fcntl(m_Descriptor, F_DUPFD_CLOEXEC, static_cast<int>(FirstPrivate));
        signalAll(SIGTERM);
    }
    // The child may have left its group, and the group may outlive it.
    auto const ends = [&](Clock::time_point limit) {
        pollfd child = {process, POLLIN, 0};
        while (process != -1 && ::poll(&child, 1, millisecondsUntil(limit)) == -1 &&
               errno == EINTR) {
        }
        bool const childRuns = process != -1 && child.revents == 0;
        return (group == 0 || waitForEndOfGroup(group, limit)) && !childRuns;
    };
    if (!ends(Clock::now() + patience)) {
        {
            std::lock_guard const lock(m_Mutex);
            if (m_Group == group)
                signalAll(SIGKILL);
        }
        ends(Clock::now() + s_TimeToDie);
    }
    if (process != -1)
        ::close(process);
}

pid_t ChildProcess::group()
{
    std::lock_guard const lock(m_Mutex);
    return m_Group;
}

} // namespace keld_common
