#include "batch/signal_watch.h"

#include <cerrno>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>

namespace keld {

SignalWatch::SignalWatch()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (int const signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        struct sigaction action = {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN)
            sigaddset(&signals, signal);
    }
    m_Descriptor = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    if (m_Descriptor == -1)
        throw std::system_error(errno, std::generic_category(), "signals cannot be watched");
    sigprocmask(SIG_BLOCK, &signals, &m_Before);
}

SignalWatch::~SignalWatch()
{
    release();
}

int SignalWatch::take() const
{
    signalfd_siginfo info = {};
    return read(m_Descriptor, &info, sizeof(info)) == sizeof(info)
               ? static_cast<int>(info.ssi_signo)
               : 0;
}

void SignalWatch::release()
{
    if (m_Descriptor == -1)
        return;
    close(m_Descriptor);
    m_Descriptor = -1;
    sigprocmask(SIG_SETMASK, &m_Before, nullptr);
}

} // namespace keld
