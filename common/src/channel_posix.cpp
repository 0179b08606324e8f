#include "child_environment.h"
#include "child_process.h"
#include "command_line.h"
#include "pipe_ends.h"
#include "polling.h"

#include <keld-common/channel.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <poll.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>

using namespace keld_common;

namespace {

static_assert(offsetof(ServerControl, descriptor) == 28);
static_assert(offsetof(ServerControl, ended) == 44);
static_assert(offsetof(ServerControl, closed) == 52);
static_assert(offsetof(ServerControl, cursor) == 56);
static_assert(offsetof(ServerControl, unread) == 64);
static_assert(offsetof(ServerControl, buffer) == 72);

constexpr std::chrono::milliseconds s_DefaultGrace{2000};
constexpr std::chrono::milliseconds s_DefaultPatience{1000};
constexpr std::chrono::milliseconds s_LeastGrace{100};
constexpr long long s_LongestGrace = 3'600'000;

struct Channel
{
    ServerControl m_Control = {};
    ChildProcess m_Translator;
    bool m_IsOpen = false;
    int m_Commands = -1;
    Clock::time_point m_GraceEnd = Clock::time_point::max();
    // Once the input is bound to end, the number of bytes that are still handed out; -1 before.
    int m_Rest = -1;
    std::chrono::milliseconds m_Grace = s_DefaultGrace;
    std::chrono::milliseconds m_Patience = s_DefaultPatience;
    char * m_OldPath = nullptr;
};

constinit Channel s_Channel;
constinit std::array<char, KELD_RECEIVE_BUFFER_SIZE> s_Buffer = {};

ServerControl & control()
{
    ServerControl & record = s_Channel.m_Control;
    if (record.buffer == nullptr) {
        record.buffer = s_Buffer.data();
        record.cursor = record.buffer;
    }
    return record;
}

void readGrace()
{
    s_Channel.m_Grace = s_DefaultGrace;
    s_Channel.m_Patience = s_DefaultPatience;
    char const * const text = std::getenv("KELD_GRACE_MS");
    if (text == nullptr)
        return;
    char const * const end = text + std::strlen(text);
    long long number = 0;
    auto const result = std::from_chars(text, end, number);
    if (result.ec != std::errc() || result.ptr != end || number < 0 || number > s_LongestGrace)
        return;
    s_Channel.m_Grace = std::chrono::milliseconds(number);
    s_Channel.m_Patience = s_Channel.m_Grace;
}

/// From here on pipe_read hands out what lies in the pipe at this moment, and then reports the end.
/// The bound matters where a process that the translator has left behind goes on writing.
void boundInput()
{
    if (s_Channel.m_Rest == -1)
        s_Channel.m_Rest = bytesIn(control().descriptor);
}

bool translatorHasEnded()
{
    if (!s_Channel.m_Translator.hasEnded())
        return false;
    control().ended = 1;
    boundInput();
    return true;
}

/// The text that "%%" in `format` makes; every other character stands for itself.
std::string withoutDoubledPercent(std::string_view format)
{
    std::string text;
    text.reserve(format.size());
    for (size_t at = 0; at < format.size(); ++at) {
        text += format[at];
        if (format.substr(at, 2) == "%%")
            ++at;
    }
    return text;
}

/// Waits until the command pipe takes bytes. Its other end may be open in a process that the
/// translator has left behind: the translator's own end counts.
bool waitForRoom()
{
    for (;;) {
        pollfd files[] = {{s_Channel.m_Commands, POLLOUT, 0},
                          {s_Channel.m_Translator.descriptor(), POLLIN, 0}};
        int const ready = ::poll(files, 2, millisecondsUntil(s_Channel.m_GraceEnd));
        if (ready == -1 && errno == EINTR)
            continue;
        if (ready <= 0 || translatorHasEnded())
            return false;
        if (files[0].revents != 0)
            return true;
    }
}

bool sendAll(std::string_view text)
{
    while (!text.empty()) {
        ssize_t const written = writeWithoutSignal(s_Channel.m_Commands, text);
        if (written >= 0)
            text.remove_prefix(static_cast<size_t>(written));
        else if (errno != EINTR && (errno != EAGAIN || !waitForRoom()))
            return false;
    }
    return true;
}

int openChannel(std::string const & command, char const * libraryPath)
{
    auto const file = findCommand(command);
    if (!file.has_value())
        return 0;
    PipeEnds pipes;
    if (!pipes.open())
        return 0;
    auto const environment = childEnvironment(libraryPath, ChildCommands, ChildFrames);
    if (!s_Channel.m_Translator.start(*file, environment, pipes.m_ChildCommands,
                                      pipes.m_ChildFrames))
        return 0;
    s_Channel.m_Commands = std::exchange(pipes.m_HostCommands, -1);
    s_Channel.m_GraceEnd = Clock::time_point::max();
    s_Channel.m_Rest = -1;
    s_Channel.m_IsOpen = true;
    ServerControl & record = control();
    record.descriptor = std::exchange(pipes.m_HostFrames, -1);
    record.ended = 0;
    record.closed = 0;
    record.cursor = record.buffer;
    record.unread = 0;
    translatorHasEnded();
    return 1;
}

} // namespace

int ServerSetLumoRunning(void)
{
    return 1;
}

int ServerOpen(int channel, char const *, char const * command, char const * libraryPath)
{
    if (channel != KELD_CHANNEL_NUMBER)
        return 0;
    ServerShutdownAndClosePipes(channel);
    control().closed = 1;
    if (command == nullptr) {
        errno = EINVAL;
        return 0;
    }
    readGrace();
    try {
        return openChannel(command, libraryPath);
    } catch (std::bad_alloc const &) {
        errno = ENOMEM;
        return 0;
    }
}

int ServerSendValist(int channel, char const * format)
{
    if (channel != KELD_CHANNEL_NUMBER || format == nullptr || !s_Channel.m_IsOpen)
        return 0;
    if (std::string_view(format) == "q\n")
        s_Channel.m_GraceEnd = std::min(s_Channel.m_GraceEnd, Clock::now() + s_Channel.m_Grace);
    if (translatorHasEnded())
        return 0;
    try {
        std::string const text = withoutDoubledPercent(format);
        return sendAll(text) ? static_cast<int>(text.size()) : 0;
    } catch (std::bad_alloc const &) {
        return 0;
    }
}

int ServerQueryExist(char const * command)
{
    try {
        return command != nullptr && findCommand(command).has_value() ? 1 : 0;
    } catch (std::bad_alloc const &) {
        return 0;
    }
}

void ServerSetInactive(int channel)
{
    if (channel == KELD_CHANNEL_NUMBER)
        control().closed = 1;
}

ServerControl * ServerGetPtr(int channel)
{
    if (channel != KELD_CHANNEL_NUMBER)
        return nullptr;
    if (s_Channel.m_IsOpen)
        translatorHasEnded();
    return &control();
}

void ServerEndOk(int channel)
{
    if (channel == KELD_CHANNEL_NUMBER)
        control().unread = 0;
}

void ServerShutdownAndClosePipes(int channel)
{
    if (channel != KELD_CHANNEL_NUMBER || !s_Channel.m_IsOpen)
        return;
    ServerControl & record = control();
    ::close(std::exchange(s_Channel.m_Commands, -1));
    ::close(std::exchange(record.descriptor, 0));
    record.closed = 1;
    record.unread = 0;
    // A translator that was told to quit has had part of its time; the rest, or at least a moment
    // for the closed pipe to take effect, is left.
    auto const now = Clock::now();
    auto const least = now + std::min(s_Channel.m_Grace, s_LeastGrace);
    auto const full = now + s_Channel.m_Grace;
    s_Channel.m_Translator.end(std::clamp(s_Channel.m_GraceEnd, least, full), s_Channel.m_Patience);
    record.ended = 1;
    s_Channel.m_IsOpen = false;
}

void ServerEndNow(int channel, int milliseconds)
{
    if (channel == KELD_CHANNEL_NUMBER)
        s_Channel.m_Translator.endNow(std::chrono::milliseconds(milliseconds));
}

int ServerGetProcess(int channel)
{
    return channel == KELD_CHANNEL_NUMBER ? s_Channel.m_Translator.group() : 0;
}

TranslatorEnding ServerGetEnding(int channel)
{
    return channel == KELD_CHANNEL_NUMBER ? s_Channel.m_Translator.ending() : TranslatorEnding{};
}

void ServerSetOldPath(char const * path)
{
    ServerFreeOldPath();
    if (path != nullptr)
        s_Channel.m_OldPath = ::strdup(path);
}

void ServerFreeOldPath(void)
{
    std::free(std::exchange(s_Channel.m_OldPath, nullptr));
}

int pipe_read(ServerControl * record, char * destination, int size)
{
    if (record != &control() || destination == nullptr || size < 0) {
        errno = EINVAL;
        return -1;
    }
    if (size == 0)
        return 0;
    if (record->descriptor == 0) {
        errno = EBADF;
        return -1;
    }
    while (s_Channel.m_Rest != 0) {
        pollfd files[] = {{record->descriptor, POLLIN, 0},
                          {s_Channel.m_Translator.descriptor(), POLLIN, 0}};
        bool const bound = s_Channel.m_Rest != -1;
        int const ready = ::poll(files, 2, bound ? 0 : millisecondsUntil(s_Channel.m_GraceEnd));
        if (ready == -1 && errno != EINTR)
            return -1;
        if (ready == 0 && bound)
            return 0;
        if (ready == 0)
            boundInput();
        if (ready <= 0)
            continue;
        if (files[1].revents != 0)
            translatorHasEnded();
        if (files[0].revents == 0)
            continue;
        int const wanted = s_Channel.m_Rest == -1 ? size : std::min(size, s_Channel.m_Rest);
        ssize_t const count = ::read(record->descriptor, destination, static_cast<size_t>(wanted));
        if (count == -1 && errno == EINTR)
            continue;
        if (count > 0 && s_Channel.m_Rest != -1)
            s_Channel.m_Rest -= static_cast<int>(count);
        return static_cast<int>(count);
    }
    return 0;
}
