#include "child_environment.h"

#include <keld-common/channel.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace keld_common {

namespace {

constexpr char s_ChannelVariable[] = "KELD_TRANSL_CHANNEL";
constexpr char s_LibraryVariable[] = "LD_LIBRARY_PATH";

bool isVariable(std::string_view entry, std::string_view name)
{
    return entry.starts_with(name) && entry.substr(name.size()).starts_with('=');
}

/// Reads exactly three decimal numbers with one blank between them, and nothing else.
bool readNumbers(std::string_view text, std::array<int, 3> & numbers)
{
    char const * at = text.data();
    char const * const end = at + text.size();
    for (size_t index = 0; index < numbers.size(); ++index) {
        if (index > 0 && (at == end || *at++ != ' '))
            return false;
        if (at == end || *at < '0' || *at > '9')
            return false;
        auto const result = std::from_chars(at, end, numbers[index]);
        if (result.ec != std::errc())
            return false;
        at = result.ptr;
    }
    return at == end;
}

bool isOpenFor(int descriptor, int unwantedMode)
{
    int const flags = ::fcntl(descriptor, F_GETFL);
    return flags != -1 && (flags & O_ACCMODE) != unwantedMode;
}

} // namespace

std::string normalizedPath(std::string_view path)
{
    std::string normalized;
    while (!path.empty()) {
        size_t const end = path.find_first_of(":;");
        std::string_view const element = path.substr(0, end);
        if (!element.empty() && !normalized.empty())
            normalized += ':';
        normalized += element;
        path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
    }
    return normalized;
}

std::vector<std::string> childEnvironment(char const * libraryPath, int commands, int frames)
{
    std::string path = normalizedPath(libraryPath == nullptr ? "" : libraryPath);
    std::vector<std::string> entries;
    for (char ** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        bool const replaced = isVariable(*entry, s_ChannelVariable) ||
                              (!path.empty() && isVariable(*entry, s_LibraryVariable));
        if (!replaced)
            entries.emplace_back(*entry);
    }
    if (!path.empty()) {
        char const * const old = std::getenv(s_LibraryVariable);
        if (old != nullptr && *old != '\0')
            path.append(":").append(old);
        entries.push_back(std::string(s_LibraryVariable) + "=" + path);
    }
    entries.push_back(std::string(s_ChannelVariable) + "=" + std::to_string(commands) + " " +
                      std::to_string(frames) + " " + std::to_string(::getpid()));
    return entries;
}

} // namespace keld_common

int TranslatorAttach(TranslatorEnds * ends)
{
    using namespace keld_common;
    char const * const text = std::getenv(s_ChannelVariable);
    std::array<int, 3> numbers = {};
    if (ends == nullptr || text == nullptr || !readNumbers(text, numbers))
        return 0;
    auto const [commands, frames, host] = numbers;
    if (commands == frames || host == 0 || !isOpenFor(commands, O_WRONLY) ||
        !isOpenFor(frames, O_RDONLY))
        return 0;
    if (::fcntl(commands, F_SETFD, FD_CLOEXEC) == -1 || ::fcntl(frames, F_SETFD, FD_CLOEXEC) == -1)
        return 0;
    ::unsetenv(s_ChannelVariable);
    *ends = {commands, frames, host};
    return 1;
}
