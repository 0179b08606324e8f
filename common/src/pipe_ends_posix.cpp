#include "child_process.h"
#include "pipe_ends.h"

#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace keld_common {

namespace {

/// Moves a descriptor up to FirstPrivate or above, out of the way of the numbers that the child's
/// ends get and of 0, which means no descriptor.
bool moveUp(int & descriptor)
{
    if (descriptor >= FirstPrivate)
        return true;
    int const moved = ::fcntl(descriptor, F_DUPFD_CLOEXEC, static_cast<int>(FirstPrivate));
    if (moved == -1)
        return false;
    ::close(std::exchange(descriptor, moved));
    return true;
}

bool openPipe(int & readEnd, int & writeEnd)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) == -1)
        return false;
    readEnd = ends[0];
    writeEnd = ends[1];
    return moveUp(readEnd) && moveUp(writeEnd);
}

} // namespace

PipeEnds::~PipeEnds()
{
    int const reason = errno;
    for (int descriptor : {m_ChildCommands, m_HostCommands, m_HostFrames, m_ChildFrames}) {
        if (descriptor != -1)
            ::close(descriptor);
    }
    errno = reason;
}

bool PipeEnds::open()
{
    return openPipe(m_ChildCommands, m_HostCommands) && openPipe(m_HostFrames, m_ChildFrames) &&
           ::fcntl(m_HostCommands, F_SETFL, O_WRONLY | O_NONBLOCK) == 0;
}

int bytesIn(int descriptor)
{
    int count = 0;
    return ::ioctl(descriptor, FIONREAD, &count) == 0 ? count : 0;
}

ssize_t writeWithoutSignal(int descriptor, std::string_view bytes)
{
    sigset_t brokenPipe;
    ::sigemptyset(&brokenPipe);
    ::sigaddset(&brokenPipe, SIGPIPE);
    sigset_t pending;
    ::sigpending(&pending);
    bool const wasPending = ::sigismember(&pending, SIGPIPE) == 1;
    sigset_t oldMask;
    ::pthread_sigmask(SIG_BLOCK, &brokenPipe, &oldMask);

    ssize_t const written = ::write(descriptor, bytes.data(), bytes.size());
    int const reason = errno;

    // The signal of a failed write waits for this thread alone: taking it here is not seen outside.
    if (written == -1 && reason == EPIPE && !wasPending) {
        timespec const now = {};
        while (::sigtimedwait(&brokenPipe, nullptr, &now) == -1 && errno == EINTR) {
        }
    }
    ::pthread_sigmask(SIG_SETMASK, &oldMask, nullptr);
    errno = reason;
    return written;
}

} // namespace keld_common
