#include "command_line.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace keld_common {

namespace {

bool isSeparator(char character)
{
    return character == ' ' || character == '\t';
}

bool hasSlash(std::string_view text)
{
    return text.find('/') != std::string_view::npos;
}

/// A directory counts as a file without permission to execute, as it does for exec.
bool isExecutableFile(std::string const & path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) == -1)
        return false;
    if (!S_ISREG(status.st_mode)) {
        errno = EACCES;
        return false;
    }
    return ::faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

/// The way of execvp: the first executable file along PATH; a file that lacks the permission is
/// remembered only as the reason of a failure. An empty element of PATH is the working directory.
std::optional<std::string> searchPath(std::string const & name)
{
    char const * const variable = std::getenv("PATH");
    std::string_view rest = variable == nullptr ? "/bin:/usr/bin" : variable;
    bool denied = false;
    for (bool more = true; more;) {
        size_t const colon = rest.find(':');
        more = colon != std::string_view::npos;
        std::string path(rest.substr(0, colon));
        if (more)
            rest.remove_prefix(colon + 1);
        if (!path.empty())
            path += '/';
        path += name;
        if (isExecutableFile(path))
            return path;
        denied = denied || errno == EACCES;
    }
    errno = denied ? EACCES : ENOENT;
    return std::nullopt;
}

} // namespace

std::optional<std::vector<std::string>> splitCommand(std::string_view command)
{
    std::vector<std::string> words;
    bool inWord = false;
    char quote = '\0';
    for (size_t at = 0; at < command.size(); ++at) {
        char const character = command[at];
        if (quote == '\0' && isSeparator(character)) {
            inWord = false;
            continue;
        }
        // Quotes without anything between them are a word too.
        if (!std::exchange(inWord, true))
            words.emplace_back();
        if (character == quote) {
            quote = '\0';
        } else if (quote == '\0' && (character == '\'' || character == '"')) {
            quote = character;
        } else if (character == '\\' && quote != '\'') {
            if (at + 1 == command.size())
                return std::nullopt;
            char const next = command[at + 1];
            bool const escapes = quote == '\0' || next == '"' || next == '\\';
            words.back() += escapes ? next : character;
            at += escapes ? 1 : 0;
        } else {
            words.back() += character;
        }
    }
    if (quote != '\0')
        return std::nullopt;
    return words;
}

std::optional<StartableCommand> findCommand(std::string const & command)
{
    if (hasSlash(command) && isExecutableFile(command))
        return StartableCommand{command, {command}};
    auto words = splitCommand(command);
    if (!words.has_value() || words->empty() || words->front().empty()) {
        errno = EINVAL;
        return std::nullopt;
    }
    std::string const & name = words->front();
    if (!hasSlash(name)) {
        auto const found = searchPath(name);
        if (!found.has_value())
            return std::nullopt;
        return StartableCommand{*found, *std::move(words)};
    }
    if (!isExecutableFile(name))
        return std::nullopt;
    return StartableCommand{name, *std::move(words)};
}

} // namespace keld_common
