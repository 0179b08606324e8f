#include "host_watch.h"

#include <keld-common/file_mapping.h>

#include <cerrno>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>

namespace translator_kit {

namespace {

int makeEvent()
{
    int const event = eventfd(0, EFD_CLOEXEC);
    if (event < 0)
        throw std::system_error(errno, std::generic_category(), "Cannot watch the host process");
    return event;
}

/// A dying process closes its pipes before it has let go of everything else.
void waitForEndOf(int process)
{
    constexpr int TimeLimit = 500; // milliseconds, for a host that lives and only closed its pipe
    pollfd end = {static_cast<int>(syscall(SYS_pidfd_open, process, 0)), POLLIN, 0};
    if (end.fd >= 0)
        poll(&end, 1, TimeLimit);
}

void watch(int commands, int host, int stop)
{
    // A hang-up is reported without being asked for; input is for the other thread.
    pollfd ends[] = {{commands, 0, 0}, {stop, POLLIN, 0}};
    while (poll(ends, 2, -1) < 0) {
    }
    if (ends[1].revents == 0) {
        waitForEndOf(host);
        ReleaseFileMappings();
        _exit(1);
    }
}

} // namespace

HostWatch::HostWatch(TranslatorEnds const & ends) : m_Stop(makeEvent())
{
    try {
        m_Thread = std::thread(watch, ends.commands, ends.hostProcess, m_Stop);
    } catch (...) {
        close(m_Stop);
        throw;
    }
}

HostWatch::~HostWatch()
{
    eventfd_write(m_Stop, 1);
    m_Thread.join();
    close(m_Stop);
}

} // namespace translator_kit
