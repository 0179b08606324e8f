#include "support/leftovers.h"

#include <atomic>
#include <cfenv>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace tests;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Each test leaves something, asks what the guard sees, and clears it away again before the guard
/// itself looks.
class Leftovers : public testing::Test
{
protected:
    LeftoverGuard m_Guard;
};

TEST_F(Leftovers, NothingIsLeftByNothing)
{
    EXPECT_THAT(m_Guard.differences(), IsEmpty());
}

TEST_F(Leftovers, ADescriptorIsSeenWithItsTarget)
{
    int const descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    EXPECT_THAT(m_Guard.differences(),
                ElementsAre("descriptor " + std::to_string(descriptor) + " is open: /dev/null"));
    ::close(descriptor);
}

TEST_F(Leftovers, AClosedDescriptorIsSeen)
{
    int const saved = ::dup(STDIN_FILENO);
    ::close(STDIN_FILENO);
    EXPECT_THAT(m_Guard.differences(), testing::Contains(HasSubstr("descriptor 0 was closed: ")));
    ::dup2(saved, STDIN_FILENO);
    ::close(saved);
}

TEST_F(Leftovers, AThreadIsSeen)
{
    std::atomic<bool> ends = false;
    std::thread thread([&ends] { ends.wait(false); });
    EXPECT_THAT(m_Guard.differences(),
                ElementsAre(AllOf(HasSubstr("thread "), HasSubstr(" is running"))));
    ends = true;
    ends.notify_all();
    thread.join();
}

TEST_F(Leftovers, AChildAndAZombieAreSeen)
{
    pid_t const running = ::fork();
    if (running == 0) {
        ::pause();
        ::_exit(0);
    }
    EXPECT_THAT(m_Guard.differences(),
                ElementsAre(AllOf(HasSubstr(std::to_string(running)), HasSubstr("running"))));
    ::kill(running, SIGKILL);
    siginfo_t info = {};
    ::waitid(P_PID, static_cast<id_t>(running), &info, WEXITED | WNOWAIT);
    EXPECT_THAT(m_Guard.differences(),
                ElementsAre(AllOf(HasSubstr(std::to_string(running)), HasSubstr("zombie"))));
    ::waitpid(running, nullptr, 0);
}

TEST_F(Leftovers, AChangedDispositionIsSeen)
{
    auto const old = std::signal(SIGUSR1, SIG_IGN);
    EXPECT_THAT(m_Guard.differences(), ElementsAre("the disposition of signal 10 was changed"));
    std::signal(SIGUSR1, old);
}

TEST_F(Leftovers, ABlockedAndAPendingSignalAreSeen)
{
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGUSR1);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    ::raise(SIGUSR1);
    EXPECT_THAT(m_Guard.differences(), ElementsAre("signal 10 is blocked", "signal 10 is pending"));
    int number = 0;
    ::sigwait(&signals, &number);
    ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

TEST_F(Leftovers, AChangedUmaskIsSeen)
{
    mode_t const old = ::umask(0123);
    EXPECT_THAT(m_Guard.differences(), ElementsAre("the umask was changed"));
    ::umask(old);
}

TEST_F(Leftovers, AnotherWorkingDirectoryIsSeen)
{
    auto const old = std::filesystem::current_path();
    TemporaryDirectory const other;
    std::filesystem::current_path(other.path());
    EXPECT_THAT(m_Guard.differences(),
                ElementsAre("the working directory is no longer " + old.string()));
    std::filesystem::current_path(old);
}

TEST_F(Leftovers, AChangedEnvironmentIsSeen)
{
    ScopedEnvironment const variable("SOME_VARIABLE", "x");
    EXPECT_THAT(m_Guard.differences(),
                ElementsAre("the environment has a new entry: SOME_VARIABLE=x"));
}

TEST_F(Leftovers, AnotherLocaleIsSeen)
{
    std::setlocale(LC_ALL, "C.UTF-8");
    EXPECT_THAT(m_Guard.differences(), ElementsAre(HasSubstr("the locale was ")));
    std::setlocale(LC_ALL, "C");
}

TEST_F(Leftovers, AnotherRoundingIsSeen)
{
    std::fesetround(FE_UPWARD);
    EXPECT_THAT(m_Guard.differences(), ElementsAre("the floating-point control was changed"));
    std::fesetround(FE_TONEAREST);
}

TEST_F(Leftovers, NamesAreSeenInSharedMemoryAndTemporaryDirectories)
{
    std::string const own = "unit-" + std::to_string(::getpid());
    std::ofstream("/dev/shm/" + own) << "x";
    EXPECT_TRUE(sharedMemoryNames().contains(own));
    std::ofstream("/tmp/vorn_" + own) << "x";
    std::ofstream("/tmp/transl_tk_" + own) << "x";
    EXPECT_THAT(m_Guard.differences(), ElementsAre("the name " + own + " is left in /dev/shm",
                                                   "the file /tmp/transl_tk_" + own + " is left",
                                                   "the file /tmp/vorn_" + own + " is left"));
    for (std::string const & path :
         {"/dev/shm/" + own, "/tmp/vorn_" + own, "/tmp/transl_tk_" + own})
        std::filesystem::remove(path);
}
