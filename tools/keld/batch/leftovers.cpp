#include "batch/leftovers.h"

#include <keld-common/file_mapping.h>
#include <keld-common/files.h>
#include <keld-transl/process/exec_io.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
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

/// Removes the temporary files that a host calls keld_<what>_<process>_<number>.
void removeNumberedFiles(std::string const & process)
{
    std::unique_ptr<char, void (*)(void *)> const directory(get_tmp_dir(), std::free);
    if (directory == nullptr)
        return;
    std::error_code error;
    for (auto const & entry : std::filesystem::directory_iterator(directory.get(), error)) {
        std::string const name = entry.path().filename();
        if (name.starts_with("keld_") && name.find("_" + process + "_") != name.npos)
            std::filesystem::remove(entry.path(), error);
    }
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
    removeNumberedFiles(id);

    // Looking for a segment whose holders are gone removes its name. An import has one segment.
    std::string const segment = "keld_" + id + "_1";
    if (void * const handle = OpenFileMappingA(KELD_FILE_MAP_ALL_ACCESS, 0, segment.c_str()))
        CloseHandle(handle);
}

} // namespace keld
