#include "batch/worker.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace keld {

namespace {

[[noreturn]] void fail(char const * what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

void closeAll(std::array<int, 3> & descriptors)
{
    for (int & descriptor : descriptors) {
        if (descriptor != -1)
            ::close(std::exchange(descriptor, -1));
    }
}

/// Writes all; a process that nobody listens to ends by SIGPIPE.
void writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        ssize_t const count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return;
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

FileResult failedBy(std::exception const & exception, ExitCode code)
{
    std::fprintf(stderr, "keld: %s\n", exception.what());
    FileResult result;
    result.code = code;
    result.reason = exception.what();
    return result;
}

} // namespace

Worker::Worker(std::function<void()> const & prepare, Task const & task)
{
    std::array<int, Pipes> childEnds = {-1, -1, -1};
    pid_t const parent = getpid();
    try {
        for (std::size_t i = 0; i < Pipes; ++i) {
            int ends[2];
            if (pipe2(ends, O_CLOEXEC) != 0)
                fail("no pipe could be made");
            m_Pipes[i] = ends[0];
            childEnds[i] = ends[1];
            fcntl(ends[0], F_SETFL, O_NONBLOCK);
        }
        std::fflush(nullptr);
        m_Process = fork();
        if (m_Process == -1)
            fail("no process could be started");
    } catch (...) {
        closeAll(childEnds);
        closeAll(m_Pipes);
        throw;
    }
    if (m_Process == 0) {
        // A worker does not outlive the one that waits for it.
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != parent)
            _exit(RunFailed);
        closeAll(m_Pipes);
        dup2(childEnds[Output], STDOUT_FILENO);
        dup2(childEnds[Messages], STDERR_FILENO);
        ::close(childEnds[Output]);
        ::close(childEnds[Messages]);
        prepare();
        work(task, childEnds[Records]);
    }
    closeAll(childEnds);
    m_End = static_cast<int>(syscall(SYS_pidfd_open, m_Process, 0));
    if (m_End == -1) {
        int const error = errno;
        kill(m_Process, SIGKILL);
        waitpid(m_Process, nullptr, 0);
        closeAll(m_Pipes);
        errno = error;
        fail("the process could not be watched");
    }
}

Worker::~Worker()
{
    if (!m_Ended) {
        signal(SIGKILL);
        while (waitpid(m_Process, nullptr, 0) == -1 && errno == EINTR) {
        }
    }
    close();
}

void Worker::work(Task const & task, int records)
{
    FileResult result;
    try {
        result = task([records](int percent) { writeAll(records, progressRecord(percent)); });
    } catch (std::filesystem::filesystem_error const & error) {
        result = failedBy(error, OutputFailed);
    } catch (std::exception const & exception) {
        result = failedBy(exception, RunFailed);
    }
    writeAll(records, resultRecord(result));
    std::exit(result.code);
}

void Worker::addTo(std::vector<pollfd> & list) const
{
    list.push_back({m_End, POLLIN, 0});
    for (int const descriptor : m_Pipes)
        list.push_back({descriptor, POLLIN, 0});
}

void Worker::read()
{
    // More than a pipe holds, and a bound for a translator that never stops printing.
    constexpr int Blocks = 4;
    char block[65536];
    for (std::size_t i = 0; i < Pipes; ++i) {
        for (int blocks = 0; m_Pipes[i] != -1 && blocks < Blocks; ++blocks) {
            ssize_t const count = ::read(m_Pipes[i], block, sizeof(block));
            if (count == 0)
                ::close(std::exchange(m_Pipes[i], -1));
            if (count <= 0)
                break;
            std::string_view const bytes(block, static_cast<std::size_t>(count));
            if (i == Records)
                m_Records.add(bytes);
            else
                (i == Output ? m_Output : m_Messages).add(bytes);
        }
    }
}

bool Worker::hasEnded()
{
    if (!m_Ended)
        m_Ended = waitpid(m_Process, &m_Status, WNOHANG) == m_Process;
    return m_Ended;
}

void Worker::signal(int signal) const
{
    if (!m_Ended)
        kill(m_Process, signal);
}

int Worker::endSignal() const
{
    return WIFSIGNALED(m_Status) ? WTERMSIG(m_Status) : 0;
}

FileResult Worker::result() const
{
    if (m_Records.hasResult() && endSignal() == 0)
        return m_Records.result();
    FileResult result;
    if (endSignal() == 0)
        result.reason = "its worker ended without an answer (exit code " +
                        std::to_string(WEXITSTATUS(m_Status)) + ").";
    else
        result.reason = "its worker was ended by signal " + std::to_string(endSignal()) + " (" +
                        strsignal(endSignal()) + ").";
    return result;
}

void Worker::close()
{
    closeAll(m_Pipes);
    if (m_End != -1)
        ::close(std::exchange(m_End, -1));
}

} // namespace keld
