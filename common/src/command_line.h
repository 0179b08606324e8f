#ifndef KELD_COMMON_COMMAND_LINE_H
#define KELD_COMMON_COMMAND_LINE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keld_common {

/// A file to start, and the words that become its argument vector.
struct StartableCommand
{
    std::string m_File;
    std::vector<std::string> m_Words;
};

/// Splits `command` into words at blanks and tabs. Between single quotes every character stands for
/// itself; between double quotes the backslash takes its meaning from a following `"` or `\`;
/// elsewhere it takes it from any character. Nothing is expanded. No value when a quote is open at
/// the end, or a backslash is last.
std::optional<std::vector<std::string>> splitCommand(std::string_view command);

/// Finds what `command` starts. A command with a slash that is, as a whole, the path of an
/// executable regular file is that file, without arguments. Any other is split into words; the
/// first one is a path when it holds a slash, and is searched for along PATH when it holds none. No
/// value when nothing can be started, with errno set: EINVAL for a command without words or with an
/// open quote, otherwise why the file does not serve.
std::optional<StartableCommand> findCommand(std::string const & command);

} // namespace keld_common

#endif
