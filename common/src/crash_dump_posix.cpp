#include "crash_dump.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <ucontext.h>
#include <unistd.h>

namespace keld_common {

namespace {

constexpr size_t s_MaxPath = PATH_MAX;
constexpr int s_MaxFrames = 128;

bool s_Ready = false;
char s_Directory[s_MaxPath];
char s_Program[s_MaxPath];
char s_CommandLine[8192];
char s_Path[s_MaxPath];
char s_CompletedPath[s_MaxPath];
void * s_Frames[s_MaxFrames];
int s_Descriptor = -1;

/// Reads a whole file, cut to the room in `text`, and ends it with a zero.
size_t readFile(char const * path, char * text, size_t room)
{
    size_t length = 0;
    int const descriptor = ::open(path, O_RDONLY | O_CLOEXEC);
    while (descriptor != -1 && length + 1 < room) {
        ssize_t const count = ::read(descriptor, text + length, room - 1 - length);
        if (count == -1 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        length += static_cast<size_t>(count);
    }
    if (descriptor != -1)
        ::close(descriptor);
    text[length] = '\0';
    return length;
}

void writeBytes(char const * bytes, size_t size)
{
    while (size > 0) {
        ssize_t const written = ::write(s_Descriptor, bytes, size);
        if (written == -1 && errno == EINTR)
            continue;
        if (written <= 0)
            return;
        bytes += written;
        size -= static_cast<size_t>(written);
    }
}

/// `number` in `base` with a zero at the end; returns the start of the text in `room`.
char const * formatted(std::uint64_t number, unsigned base, std::array<char, 24> & room)
{
    char * at = room.data() + room.size() - 1;
    *at = '\0';
    do {
        *--at = "0123456789abcdef"[number % base];
        number /= base;
    } while (number != 0);
    return at;
}

void dumpDecimal(std::uint64_t number)
{
    std::array<char, 24> room;
    dumpText(formatted(number, 10, room));
}

void dumpHexadecimal(std::uint64_t number)
{
    std::array<char, 24> room;
    dumpText("0x");
    dumpText(formatted(number, 16, room));
}

char const * signalName(int signal)
{
    switch (signal) {
    case SIGSEGV:
        return "SIGSEGV, invalid memory reference";
    case SIGBUS:
        return "SIGBUS, access to memory that is not there";
    case SIGILL:
        return "SIGILL, illegal instruction";
    case SIGFPE:
        return "SIGFPE, erroneous arithmetic operation";
    case SIGABRT:
        return "SIGABRT, abort";
    default:
        return "unknown";
    }
}

/// Module and offset of a code address. The look-up takes no lock and allocates nothing, unlike
/// dladdr, so that it works whatever the process was doing.
void dumpCodeAddress(void * code)
{
    auto const address = reinterpret_cast<std::uintptr_t>(code);
    dl_find_object module;
    if (::_dl_find_object(code, &module) != 0) {
        dumpHexadecimal(address);
        return;
    }
    // The program itself stands in the list without a name.
    char const * const name = module.dlfo_link_map->l_name;
    dumpText(name == nullptr || *name == '\0' ? s_Program : name);
    dumpText("+");
    dumpHexadecimal(address - module.dlfo_link_map->l_addr);
}

/// Joins directory, file name and process id. The id is asked for now: a fork may lie between the
/// installation and the fault.
bool composePath()
{
    size_t const length = std::strlen(s_Directory);
    std::array<char, 24> room;
    char const * const number = formatted(static_cast<std::uint64_t>(::getpid()), 10, room);
    char const * const parts[] = {s_Directory,
                                  length > 0 && s_Directory[length - 1] != '/' ? "/" : "",
                                  "vorn_dump_", number, ".txt"};
    size_t at = 0;
    for (char const * part : parts) {
        size_t const size = std::strlen(part);
        if (at + size + 1 > sizeof(s_Path))
            return false;
        std::memcpy(s_Path + at, part, size);
        at += size;
    }
    s_Path[at] = '\0';
    return true;
}

} // namespace

void prepareDump(char const * directory)
{
    size_t const length = std::strlen(directory);
    s_Ready = length < sizeof(s_Directory);
    if (s_Ready)
        std::memcpy(s_Directory, directory, length + 1);

    ssize_t const programLength = ::readlink("/proc/self/exe", s_Program, sizeof(s_Program) - 1);
    s_Program[programLength > 0 ? programLength : 0] = '\0';
    size_t const size = readFile("/proc/self/cmdline", s_CommandLine, sizeof(s_CommandLine));
    for (size_t at = 0; at + 1 < size; ++at) {
        if (s_CommandLine[at] == '\0')
            s_CommandLine[at] = ' ';
    }
    // The first call loads the unwinder's library and allocates; later ones do neither.
    ::backtrace(s_Frames, s_MaxFrames);
}

bool openDump()
{
    s_CompletedPath[0] = '\0';
    if (!s_Ready || !composePath())
        return false;
    int const flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    s_Descriptor = ::open(s_Path, flags, S_IRUSR | S_IWUSR);
    if (s_Descriptor == -1 && errno == EEXIST && ::unlink(s_Path) == 0)
        s_Descriptor = ::open(s_Path, flags, S_IRUSR | S_IWUSR);
    if (s_Descriptor == -1)
        return false;
    ::fchmod(s_Descriptor, S_IRUSR | S_IWUSR);
    return true;
}

void dumpText(char const * text)
{
    writeBytes(text, std::strlen(text));
}

void dumpFault(int signal, siginfo_t const & info, void const * context)
{
    dumpText("Signal: ");
    dumpDecimal(static_cast<std::uint64_t>(signal));
    dumpText(" (");
    dumpText(signalName(signal));
    dumpText(")\n");
    // A code above 0 comes from the kernel, which then gives the address; any other signal was
    // sent.
    if (info.si_code > 0 && signal != SIGABRT) {
        dumpText("Faulting address: ");
        dumpHexadecimal(reinterpret_cast<std::uintptr_t>(info.si_addr));
    } else {
        dumpText("Faulting address: none, sent by process ");
        dumpDecimal(static_cast<std::uint64_t>(info.si_pid));
    }
    dumpText("\nInstruction: ");
    auto const & registers = static_cast<ucontext_t const *>(context)->uc_mcontext.gregs;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the register does hold an address.
    dumpCodeAddress(reinterpret_cast<void *>(registers[REG_RIP]));
    dumpText("\nProcess: ");
    dumpDecimal(static_cast<std::uint64_t>(::getpid()));
    dumpText("\nCommand line: ");
    dumpText(s_CommandLine);
    dumpText("\n\nBacktrace:\n");
}

void dumpStack()
{
    int const count = ::backtrace(s_Frames, s_MaxFrames);
    for (int frame = 0; frame < count; ++frame) {
        dumpText("#");
        dumpDecimal(static_cast<std::uint64_t>(frame));
        dumpText(" ");
        dumpCodeAddress(s_Frames[frame]);
        dumpText("\n");
    }
    // Takes the loader's lock, which a thread in dlopen may hold: hence last, and under the time
    // limit of the report.
    dumpText("\nSymbols:\n");
    ::backtrace_symbols_fd(s_Frames, count, s_Descriptor);
}

void closeDump()
{
    ::close(s_Descriptor);
    s_Descriptor = -1;
    std::memcpy(s_CompletedPath, s_Path, sizeof(s_Path));
}

char const * dumpPath()
{
    return s_CompletedPath;
}

} // namespace keld_common
