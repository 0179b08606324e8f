#ifndef KELD_TESTS_UNIT_COMMON_CHILD_H
#define KELD_TESTS_UNIT_COMMON_CHILD_H

#include <functional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace tests {

/// Puts `body` under `name` into the list of what this test program can be started as.
struct ChildRegistration
{
    ChildRegistration(char const * name, int (*body)(int argc, char ** argv));
};

/// Defines the body of a real child process, beside the test that starts it by
/// childCommand("name"). Its result is the exit code; argv begins behind the name.
#define KELD_CHILD(name)                                                                           \
    static int name(int argc, char ** argv);                                                       \
    static tests::ChildRegistration const s_Register_##name(#name, &name);                         \
    static int name([[maybe_unused]] int argc, [[maybe_unused]] char ** argv)

/// Path of this test program.
std::string ownPath();

/// Command that starts this test program as the child `name`.
std::string childCommand(std::string const & name);

/// `text` in single quotes, as a shell reads it.
std::string shellQuoted(std::string_view text);

/// Command that runs `script` in a shell.
std::string shell(std::string const & script);

/// Writes an executable script.
void writeScript(std::string const & path, std::string const & text);

std::string contentOf(std::string const & path);

/// Runs `body` in a forked child and answers its wait status. A test failure in the child makes its
/// exit code 1.
int statusOfFork(std::function<void()> const & body);

/// Like statusOfFork, for a body that must end well.
void expectWellInFork(std::function<void()> const & body);

/// Whether process `id` is gone, or left as a zombie to whoever is its parent now.
bool hasGone(pid_t id);

/// Asks until `condition` holds, for at most ten seconds; answers whether it does.
bool comesTrue(std::function<bool()> const & condition);

} // namespace tests

#endif
