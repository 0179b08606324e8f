#include "batch/leftovers.h"

#include <keld-common/file_mapping.h>
#include <keld-common/files.h>
#include <keld-transl/process/exec_io.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <vector>

namespace keld {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds Patience(300);
constexpr std::chrono::milliseconds LastPatience(200); // after SIGKILL

std::vector<pid_t> childrenBut(std::set<pid_t> const & workers)
{
    std::vector<pid_t> children;
    std::ifstream list("/proc/thread-self/children");
    for (pid_t child = 0; list >> child;) {
        if (workers.count(child) == 0)
            children.push_back(child);
    }
    return children;
}

/// A translator leads a group of its own.
void signalGroup(pid_t process, int signal)
{
    kill(-process, signal);
    kill(process, signal);
}

} // namespace

void inheritTranslators()
{
    prctl(PR_SET_CHILD_SUBREAPER, 1);
}

void endTranslators(std::set<pid_t> const & workers)
{
    std::set<pid_t> asked;
    auto const limit = Clock::now() + Patience;
    for (;;) {
        std::vector<pid_t> const left = childrenBut(workers);
        if (left.empty() || Clock::now() > limit + LastPatience)
            return;
        for (pid_t const child : left) {
            if (Clock::now() > limit)
                signalGroup(child, SIGKILL);
            else if (asked.insert(child).second)
                signalGroup(child, SIGTERM);
            waitpid(child, nullptr, WNOHANG);
        }
        poll(nullptr, 0, 2);
    }
}

void removeLeftovers(pid_t worker)
{
    std::string const id = std::to_string(worker);
    transl_tk::IExecIO * const options = transl_tk::IExecIO::create();
    std::string const optionsFile = options->optionsFilePath(id);
    transl_tk::IExecIO::destruct(options);
    if (!optionsFile.empty())
        unlink_utf8(optionsFile.c_str());

    // Looking for a segment whose holders are gone removes its name. An import has one segment.
    std::string const segment = "keld_" + id + "_1";
    if (void * const handle = OpenFileMappingA(KELD_FILE_MAP_ALL_ACCESS, 0, segment.c_str()))
        CloseHandle(handle);
}

} // namespace keld
