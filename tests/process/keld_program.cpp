#include "process/keld_program.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <linux/capability.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tests {

namespace {

using namespace std::chrono_literals;

constexpr int NotAllowedHere = 77;
constexpr auto TimeLimit = 60s;

template <class Condition> bool waitUntil(Condition condition)
{
    auto const limit = std::chrono::steady_clock::now() + TimeLimit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > limit)
            return false;
        std::this_thread::sleep_for(2ms);
    }
    return true;
}

void writeText(std::string const & path, std::string const & text)
{
    int const file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    bool const done = write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    close(file);
    if (!done)
        _exit(NotAllowedHere);
}

/// Makes mounts of this process its own affair; without privileges, as the superuser of a name
/// space of its own.
void separateMounts()
{
    uid_t const user = getuid();
    gid_t const group = getgid();
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            _exit(NotAllowedHere);
        writeText("/proc/self/setgroups", "deny");
        writeText("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
        writeText("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
    }
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        _exit(NotAllowedHere);
}

} // namespace

KeldProgram::KeldProgram()
    // Below the working directory of the tests, so that a test can hide /tmp from the program.
    : m_Files(std::filesystem::current_path(), "keld-files-"),
      m_Temporary(std::filesystem::current_path(), "keld-tmp-"),
      m_Output(std::filesystem::current_path(), "keld-output-")
{
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    for (char const * name : {"VORN_EXEC_DIR", "KELD_SHARED_DIR", "KELD_LIB_PATH", "JT_OPEN_PATH",
                              "CT_LIB_PATH", "CT_LIB_PATH_DBG", "RHINO_LIB_PATH", "U3DPDF_LIB_PATH",
                              "STEP_LIB_PATH", "TRANSL_REPORT_FILE", "KELD_TEST_SCRIPT"})
        unset(name);
    set("TMP", m_Temporary.path());
}

std::string KeldProgram::file(std::string const & name, std::string const & content) const
{
    std::ofstream(files() / name, std::ios::binary) << content;
    return files() / name;
}

void KeldProgram::installScripted(std::string const & name, std::string const & script)
{
    set("KELD_TEST_SCRIPT", script);
    install(name, KELD_TEST_SCRIPTED_TRANSLATOR);
}

void KeldProgram::install(std::string const & name, std::string const & executable)
{
    std::filesystem::create_directories(bin());
    set("VORN_EXEC_DIR", files() / "installation");
    std::string const script = bin() + "/keld_" + name + ".sh";
    std::ofstream(script) << "#!/bin/sh\nexec \"${0%/*}/keld_" << name
                          << "_linux_x86_64\" \"$@\"\n";
    std::filesystem::permissions(script, std::filesystem::perms(0755));
    std::filesystem::create_symlink(executable, bin() + "/keld_" + name + "_linux_x86_64");
}

Ended KeldProgram::run(std::vector<std::string> const & arguments)
{
    start(arguments);
    Ended const ended = reap(m_Process);
    EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG)) << "the program left a process behind";
    EXPECT_EQ(std::set<std::string>(), temporaryFiles());
    for (std::string const & name : files().names())
        EXPECT_EQ(std::string::npos, name.find(".part")) << name;
    return ended;
}

pid_t KeldProgram::start(std::vector<std::string> const & arguments)
{
    m_Process = fork();
    if (m_Process == 0)
        become(arguments);
    return m_Process;
}

Ended KeldProgram::finish()
{
    Ended const ended = reap(m_Process);
    while (waitUntil([] { return waitpid(-1, nullptr, WNOHANG) != 0; }) && errno != ECHILD) {
    }
    return ended;
}

Ended KeldProgram::reap(pid_t process) const
{
    int status = 0;
    if (!waitUntil([&] { return waitpid(process, &status, WNOHANG) == process; })) {
        ADD_FAILURE() << "the program does not end";
        kill(process, SIGKILL);
        waitpid(process, &status, 0);
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            WIFSIGNALED(status) ? WTERMSIG(status) : 0, contentOf(m_Output / "out"),
            contentOf(m_Output / "err")};
}

void KeldProgram::become(std::vector<std::string> const & arguments) const
{
    for (std::string const & name : m_Removed)
        unsetenv(name.c_str());
    for (auto const & [name, value] : m_Environment)
        setenv(name.c_str(), value.c_str(), 1);
    constexpr int Flags = O_WRONLY | O_CREAT | O_TRUNC | O_APPEND;
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    dup2(open((m_Output / "out").c_str(), Flags, 0600), STDOUT_FILENO);
    dup2(open((m_Output / "err").c_str(), Flags, 0600), STDERR_FILENO);
    if (m_Hook)
        m_Hook();
    if (chdir(files().path().c_str()) != 0)
        _exit(NotAllowedHere);

    std::vector<char *> words = {const_cast<char *>(KELD_TEST_PROGRAM)};
    for (std::string const & argument : arguments)
        words.push_back(const_cast<char *>(argument.c_str()));
    words.push_back(nullptr);
    execv(KELD_TEST_PROGRAM, words.data());
    _exit(127);
}

void obeyPermissions()
{
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
}

void mountSmall(std::string const & directory, std::string const & size)
{
    separateMounts();
    if (mount("tmpfs", directory.c_str(), "tmpfs", 0, ("size=" + size).c_str()) != 0)
        _exit(NotAllowedHere);
}

void mountReadOnly(std::string const & directory)
{
    separateMounts();
    if (mount("tmpfs", directory.c_str(), "tmpfs", MS_RDONLY, nullptr) != 0)
        _exit(NotAllowedHere);
}

void waitInScript(KeldProgram const & keld, std::string const & name)
{
    std::ofstream(keld.bin() + "/keld_" + name + ".sh")
        << "#!/bin/sh\n\"${0%/*}/keld_" << name << "_linux_x86_64\" \"$@\"\n";
}

bool waitForFile(std::string const & path)
{
    bool const there = waitUntil([&] { return access(path.c_str(), F_OK) == 0; });
    EXPECT_TRUE(there) << path << " does not come";
    return there;
}

bool segmentIsThere(std::string const & name)
{
    auto const names = sharedMemoryNames();
    return std::any_of(names.begin(), names.end(),
                       [&](std::string const & found) { return found.ends_with(name); });
}

std::string contentOf(std::string const & path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace tests
