#include "interrupt.h"

#include <keld-common/file_mapping.h>
#include <keld-common/files.h>
#include <keld-transl/process/exec_io.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace keld {

namespace {

constexpr int Signals[] = {SIGINT, SIGTERM, SIGHUP, SIGPIPE};

int signalPipe[2];

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
    if (!optionsFile.empty())
        unlink_utf8(optionsFile.c_str());
    ReleaseFileMappings();
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

} // namespace keld
