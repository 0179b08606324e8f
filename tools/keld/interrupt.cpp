#include "interrupt.h"

#include <keld-common/channel.h>
#include <keld-common/file_mapping.h>
#include <keld-common/files.h>
#include <keld-transl/process/exec_io.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <mutex>
#include <string>
#include <thread>
#include <unistd.h>

namespace keld {

namespace {

constexpr int Signals[] = {SIGINT, SIGTERM, SIGHUP, SIGPIPE};

constexpr int Patience = 200; // milliseconds for a translator that tidies up

int signalPipe[2];

/// The segment of the current run. Once the program is interrupted the mutex stays taken.
struct CurrentSegment
{
    std::mutex mutex;
    std::string name;
};

/// Never freed: the thread that waits for signals outlives everything else.
CurrentSegment & currentSegment()
{
    static auto & segment = *new CurrentSegment;
    return segment;
}

/// Removes the name of a segment whose holders have died: to open it and let go makes this process
/// its last holder.
void removeSegment(std::string const & name)
{
    if (!name.empty())
        OpenFileMappingA(KELD_FILE_MAP_ALL_ACCESS, 0, name.c_str());
    ReleaseFileMappings();
}

void passOn(int signal)
{
    int const savedError = errno;
    auto const number = static_cast<unsigned char>(signal);
    (void)!write(signalPipe[1], &number, 1);
    errno = savedError;
}

void die(std::string const & optionsFile)
{
    unsigned char signal = 0;
    while (read(signalPipe[0], &signal, 1) != 1) {
    }
    currentSegment().mutex.lock();
    ServerEndNow(KELD_CHANNEL_NUMBER, Patience);
    if (!optionsFile.empty())
        unlink_utf8(optionsFile.c_str());
    removeSegment(currentSegment().name);
    if (isatty(STDERR_FILENO))
        (void)!write(STDERR_FILENO, "\n", 1); // the progress bar's line
    std::signal(signal, SIG_DFL);
    raise(signal);
}

} // namespace

void cleanUpOnInterrupt()
{
    transl_tk::IExecIO * const options = transl_tk::IExecIO::create();
    std::string const optionsFile = options->optionsFilePath(std::to_string(getCurrentProcessId()));
    transl_tk::IExecIO::destruct(options);

    if (pipe2(signalPipe, O_CLOEXEC) != 0)
        return;
    std::thread(die, optionsFile).detach();
    for (int const signal : Signals) {
        struct sigaction action = {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action.sa_handler = passOn;
        action.sa_flags = SA_RESTART;
        sigaction(signal, &action, nullptr);
    }
}

InterruptibleRun::InterruptibleRun(std::string const & segment)
{
    std::lock_guard const lock(currentSegment().mutex);
    currentSegment().name = segment;
}

InterruptibleRun::~InterruptibleRun()
{
    std::lock_guard const lock(currentSegment().mutex);
    currentSegment().name.clear();
}

} // namespace keld
