#include "step/translator_process.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace tests {

namespace {

struct Pipe
{
    Pipe()
    {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            throw std::system_error(errno, std::generic_category());
        out = ends[0];
        in = ends[1];
    }

    int out = -1;
    int in = -1;
};

bool readAll(int descriptor, char * bytes, std::size_t size)
{
    while (size > 0) {
        ssize_t const count = ::read(descriptor, bytes, size);
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        if (count > 0) {
            bytes += count;
            size -= static_cast<std::size_t>(count);
        }
    }
    return true;
}

} // namespace

TranslatorProcess::TranslatorProcess()
{
    Pipe const commands;
    Pipe const frames;
    std::string const channel = "KELD_TRANSL_CHANNEL=" + std::to_string(commands.out) + " " +
                                std::to_string(frames.in) + " " + std::to_string(::getpid());
    m_Process = ::fork();
    if (m_Process == 0) {
        ::fcntl(commands.out, F_SETFD, 0);
        ::fcntl(frames.in, F_SETFD, 0);
        ::putenv(const_cast<char *>(channel.c_str()));
        ::execl(KELD_TEST_STEP_TRANSLATOR, KELD_TEST_STEP_TRANSLATOR, nullptr);
        ::_exit(127);
    }
    ::close(commands.out);
    ::close(frames.in);
    m_Commands = commands.in;
    m_Frames = frames.out;
}

TranslatorProcess::~TranslatorProcess()
{
    hangUp();
    receiveRest();
    ::close(m_Frames);
    if (m_Process > 0)
        wait();
}

void TranslatorProcess::read(std::string const & path, std::string const & segment)
{
    constexpr std::size_t FirstCommandSize = 4096;
    std::string first = "f " + path + "\n";
    first.resize(FirstCommandSize, '-');
    send(first);
    receive(); // the name of the file is accepted
    send("i " + segment + "\n");
}

void TranslatorProcess::finish()
{
    send("x u\n");
    receive(); // the end mark
    send("q\n");
}

void TranslatorProcess::hangUp()
{
    if (m_Commands >= 0)
        ::close(m_Commands);
    m_Commands = -1;
}

TranslatorProcess::Frame TranslatorProcess::receive()
{
    unsigned char head[3] = {};
    if (!readAll(m_Frames, reinterpret_cast<char *>(head), sizeof(head)))
        return {};
    Frame frame = {static_cast<char>(head[2]), 0};
    std::string values(static_cast<std::size_t>(head[0] + 256 * head[1] - 1), '\0');
    if (!readAll(m_Frames, values.data(), values.size()))
        return {};
    if (values.size() >= sizeof(frame.value))
        std::memcpy(&frame.value, values.data(), sizeof(frame.value));
    return frame;
}

std::vector<TranslatorProcess::Frame> TranslatorProcess::receiveRest()
{
    std::vector<Frame> frames;
    for (Frame frame = receive(); frame.key != 0; frame = receive())
        frames.push_back(frame);
    return frames;
}

int TranslatorProcess::wait()
{
    int status = 0;
    while (::waitpid(m_Process, &status, 0) < 0 && errno == EINTR) {
    }
    m_Process = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

void TranslatorProcess::send(std::string const & command) const
{
    [[maybe_unused]] ssize_t const count = ::write(m_Commands, command.data(), command.size());
}

} // namespace tests
