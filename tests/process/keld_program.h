#ifndef KELD_TESTS_KELD_PROGRAM_H
#define KELD_TESTS_KELD_PROGRAM_H

#include "support/leftovers.h"

#include <functional>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace tests {

/// How a run of the host program ended.
struct Ended
{
    int code = -1;   ///< exit code; -1 when a signal ended it
    int signal = 0;  ///< the signal that ended it, 0 for none
    std::string out; ///< standard output
    std::string err; ///< standard error, the translator's included
};

/// One run of the host program in surroundings of its own: an empty temporary directory, and an
/// installation that a test may furnish.
///
/// The test becomes the reaper of whatever the program leaves behind, so that a translator that
/// outlives its host is a left child of the test.
class KeldProgram
{
public:
    KeldProgram();

    /// A directory for the test's files; the program runs in it.
    TemporaryDirectory const & files() const { return m_Files; }

    /// Path of `name` in that directory; `content` goes into it.
    std::string file(std::string const & name, std::string const & content) const;

    /// Sets an environment variable of the program.
    void set(std::string const & name, std::string const & value) { m_Environment[name] = value; }

    /// Removes an environment variable of the program.
    void unset(std::string const & name) { m_Removed.push_back(name); }

    /// Puts the program's installation into a directory of the test's files, and the scripted
    /// translator into it as translator `name`, to follow `script`.
    void installScripted(std::string const & name, std::string const & script);

    /// The same with any executable.
    void install(std::string const & name, std::string const & executable);

    /// The bin directory of that installation.
    std::string bin() const { return m_Files / "installation/bin"; }

    /// Called in the program's process before the program starts. 77 as exit code then means that
    /// this machine does not allow what the hook does.
    void before(std::function<void()> hook) { m_Hook = std::move(hook); }

    /// Runs the program to its end, and fails the test when it leaves a process, a file in its
    /// temporary directory, or an unfinished output file.
    Ended run(std::vector<std::string> const & arguments);

    /// Starts the program; its process id.
    pid_t start(std::vector<std::string> const & arguments);

    /// Waits for the end of what `start` started, and of all that it left behind.
    Ended finish();

    /// Names of the files in the program's temporary directory.
    std::set<std::string> temporaryFiles() const { return m_Temporary.names(); }

private:
    [[noreturn]] void become(std::vector<std::string> const & arguments) const;
    Ended reap(pid_t process) const;

    TemporaryDirectory m_Files;
    TemporaryDirectory m_Temporary;
    TemporaryDirectory m_Output;
    std::map<std::string, std::string> m_Environment;
    std::vector<std::string> m_Removed;
    std::function<void()> m_Hook;
    pid_t m_Process = -1;
};

/// Hooks for `KeldProgram::before`.

/// Takes away the right to pass over file permissions, which the superuser has.
void obeyPermissions();

/// Gives the program a small file system of `size` bytes, such as "64k", at `directory`, for
/// itself.
void mountSmall(std::string const & directory, std::string const & size);

/// Makes the file system at `directory` one that the program cannot write to.
void mountReadOnly(std::string const & directory);

/// Has the script of the installed translator `name` wait for the executable instead of becoming
/// it.
void waitInScript(KeldProgram const & keld, std::string const & name);

/// Waits until the file `path` is there; false, and a failure of the test, when it does not come.
bool waitForFile(std::string const & path);

/// Whether a segment `name` is there.
bool segmentIsThere(std::string const & name);

std::string contentOf(std::string const & path);

} // namespace tests

#endif
