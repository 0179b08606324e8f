#include "support/leftovers.h"
#include "unit/common/child.h"

#include <keld-common/crash_report.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tests;
using testing::AllOf;
using testing::HasSubstr;

namespace {

class CrashReport : public testing::Test
{
protected:
    /// Runs `body` in a child that has crash reports in the directory; no core file is written.
    int statusOf(std::function<void()> const & body, crash_report_callback callback = nullptr)
    {
        return statusOfFork([this, &body, callback] {
            rlimit const none = {0, 0};
            ::setrlimit(RLIMIT_CORE, &none);
            install_crash_report_args(m_Directory.path().c_str(), 0, callback, 42);
            body();
        });
    }

    /// The only dump file in the directory.
    std::string dumpPath() const
    {
        auto const names = m_Directory.names();
        EXPECT_EQ(names.size(), 1U);
        return names.empty() ? "" : m_Directory / *names.begin();
    }

    std::string dump() const { return contentOf(dumpPath()); }

private:
    LeftoverGuard m_Guard;

protected:
    TemporaryDirectory m_Directory;
};

/// An address that is not mapped, which no compiler knows.
char * forbiddenAddress()
{
    void * const page = ::mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return static_cast<char *>(page);
}

void touch(char * address)
{
    asm volatile("movb $1, (%0)" : : "r"(address) : "memory");
}

/// Says in the test's output file what the callback saw.
int s_Output = -1;

int describe(int signal, int answer)
{
    std::string const text =
        std::to_string(signal) + " " + std::to_string(answer) + " " + crash_report_get_filename();
    return ::write(s_Output, text.data(), text.size()) > 0 ? answer : 0;
}

int faultAgain(int, int)
{
    touch(forbiddenAddress());
    return 0;
}

int abortAgain(int, int)
{
    std::abort();
}

int hang(int, int)
{
    for (;;)
        ::pause();
}

} // namespace

TEST_F(CrashReport, EachSignalEndsTheProcessAndIsNamed)
{
    struct Row
    {
        int m_Signal;
        char const * m_Words;
    };
    Row const rows[] = {{SIGSEGV, "Signal: 11 (SIGSEGV, invalid memory reference)\n"},
                        {SIGBUS, "Signal: 7 (SIGBUS, access to memory that is not there)\n"},
                        {SIGILL, "Signal: 4 (SIGILL, illegal instruction)\n"},
                        {SIGFPE, "Signal: 8 (SIGFPE, erroneous arithmetic operation)\n"},
                        {SIGABRT, "Signal: 6 (SIGABRT, abort)\n"}};
    for (Row const & row : rows) {
        int const status = statusOf([&row] { ::kill(::getpid(), row.m_Signal); });
        EXPECT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(WTERMSIG(status), row.m_Signal);
        EXPECT_THAT(dump(), HasSubstr(row.m_Words));
        EXPECT_THAT(dump(), HasSubstr("Faulting address: none, sent by process "));
        std::filesystem::remove(dumpPath());
    }
}

TEST_F(CrashReport, AFaultIsReportedWithItsAddressAndPlace)
{
    // Mapped before the fork, so that both processes know the address.
    char * const address = forbiddenAddress();
    int const status = statusOf([address] { touch(address + 5); });
    EXPECT_EQ(WTERMSIG(status), SIGSEGV);
    char text[64];
    std::snprintf(text, sizeof(text), "Faulting address: %p\n", static_cast<void *>(address + 5));
    EXPECT_THAT(dump(), HasSubstr(text));
    EXPECT_THAT(dump(), HasSubstr("\nInstruction: " + ownPath() + "+0x"));
    EXPECT_THAT(dump(), HasSubstr("\nBacktrace:\n#0 "));
    EXPECT_THAT(dump(), HasSubstr("\nSymbols:\n"));
    EXPECT_THAT(dump(), HasSubstr("__libc_start_main"));
    ::munmap(address, 4096);
}

TEST_F(CrashReport, FaultsOfTheProcessorAreReported)
{
    EXPECT_EQ(WTERMSIG(statusOf([] { asm volatile("ud2"); })), SIGILL);
    std::filesystem::remove(dumpPath());
    EXPECT_EQ(WTERMSIG(statusOf([] {
                  asm volatile("xorl %%edx, %%edx; movl $1, %%eax; xorl %%ecx, %%ecx; divl %%ecx"
                               :
                               :
                               : "eax", "ecx", "edx");
              })),
              SIGFPE);
    std::filesystem::remove(dumpPath());
    EXPECT_EQ(WTERMSIG(statusOf([] { std::abort(); })), SIGABRT);
    std::filesystem::remove(dumpPath());
    std::string const file = m_Directory / "empty";
    EXPECT_EQ(WTERMSIG(statusOf([&file] {
                  int const descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
                  void * const page =
                      ::mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
                  ::unlink(file.c_str());
                  touch(static_cast<char *>(page));
              })),
              SIGBUS);
    EXPECT_THAT(dump(), HasSubstr("Signal: 7"));
}

TEST_F(CrashReport, TheDumpIsNamedAfterTheProcessAndIsPrivate)
{
    int process = 0;
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    statusOf([&ends] {
        pid_t const own = ::getpid();
        if (::write(ends[1], &own, sizeof(own)) > 0)
            std::abort();
    });
    ASSERT_EQ(::read(ends[0], &process, sizeof(process)), ssize_t(sizeof(process)));
    ::close(ends[0]);
    ::close(ends[1]);
    EXPECT_EQ(dumpPath(), m_Directory / ("vorn_dump_" + std::to_string(process) + ".txt"));
    EXPECT_THAT(dump(), HasSubstr("\nProcess: " + std::to_string(process) + "\n"));
    struct stat status = {};
    ASSERT_EQ(::stat(dumpPath().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode, mode_t(S_IFREG | 0600));
}

TEST_F(CrashReport, TheCommandLineIsReported)
{
    statusOf([] { std::abort(); });
    std::string commandLine = contentOf("/proc/self/cmdline");
    commandLine.pop_back();
    std::replace(commandLine.begin(), commandLine.end(), '\0', ' ');
    EXPECT_THAT(dump(), HasSubstr("\nCommand line: " + commandLine + "\n"));
}

TEST_F(CrashReport, TheDirectoryMayEndInASeparator)
{
    statusOf([this] {
        install_crash_report_args((m_Directory.path().string() + "/").c_str(), 0, nullptr, 0);
        std::abort();
    });
    EXPECT_THAT(dump(), HasSubstr("SIGABRT"));
}

TEST_F(CrashReport, TheCallbackKnowsTheDumpFile)
{
    TemporaryDirectory const output;
    s_Output = ::open((output / "seen").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    int const status = statusOf(
        [] {
            EXPECT_STREQ(crash_report_get_filename(), "");
            std::abort();
        },
        describe);
    ::close(s_Output);
    EXPECT_EQ(WTERMSIG(status), SIGABRT);
    EXPECT_EQ(contentOf(output / "seen"), "6 42 " + dumpPath());
}

TEST_F(CrashReport, ASecondInstallationChangesDirectoryAndCallback)
{
    TemporaryDirectory const other;
    TemporaryDirectory const output;
    s_Output = ::open((output / "seen").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    statusOf(
        [&other] {
            install_crash_report_args(other.path().c_str(), 0, describe, 7);
            std::abort();
        },
        hang);
    ::close(s_Output);
    EXPECT_TRUE(m_Directory.names().empty());
    EXPECT_EQ(other.names().size(), 1U);
    EXPECT_THAT(contentOf(output / "seen"), testing::StartsWith("6 7 "));
}

TEST_F(CrashReport, AFaultInTheCallbackEndsTheProcessAtOnce)
{
    EXPECT_EQ(WTERMSIG(statusOf([] { ::raise(SIGFPE); }, faultAgain)), SIGSEGV);
    std::filesystem::remove(dumpPath());
    EXPECT_EQ(WTERMSIG(statusOf([] { ::raise(SIGSEGV); }, faultAgain)), SIGSEGV);
    std::filesystem::remove(dumpPath());
    EXPECT_EQ(WTERMSIG(statusOf([] { ::raise(SIGSEGV); }, abortAgain)), SIGABRT);
    EXPECT_THAT(dump(), HasSubstr("SIGSEGV"));
}

TEST_F(CrashReport, ACallbackThatHangsIsGivenUp)
{
    EXPECT_EQ(WTERMSIG(statusOf([] { std::abort(); }, hang)), SIGABRT);
    EXPECT_THAT(dump(), HasSubstr("SIGABRT"));
}

TEST_F(CrashReport, WithoutADumpFileTheCallbackStillRuns)
{
    TemporaryDirectory const output;
    s_Output = ::open((output / "seen").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    for (std::string const & directory : {m_Directory / "missing", std::string(5000, 'x')}) {
        ASSERT_EQ(::ftruncate(s_Output, 0), 0);
        ASSERT_EQ(::lseek(s_Output, 0, SEEK_SET), 0);
        int const status = statusOf([&directory] {
            install_crash_report_args(directory.c_str(), 0, describe, 1);
            std::abort();
        });
        EXPECT_EQ(WTERMSIG(status), SIGABRT);
        EXPECT_EQ(contentOf(output / "seen"), "6 1 ");
    }
    ::close(s_Output);
    EXPECT_TRUE(m_Directory.names().empty());
}

TEST_F(CrashReport, AFileOrLinkUnderTheNameIsReplaced)
{
    TemporaryDirectory const output;
    std::string const target = output / "target";
    statusOf([this, &target] {
        std::filesystem::create_symlink(
            target, m_Directory / ("vorn_dump_" + std::to_string(::getpid()) + ".txt"));
        std::abort();
    });
    EXPECT_TRUE(output.names().empty());
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(dumpPath())));
    EXPECT_THAT(dump(), HasSubstr("SIGABRT"));
}

namespace {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winfinite-recursion"
int recurse(char volatile * above)
{
    char volatile block[4096];
    block[0] = above[0];
    return recurse(block) + block[0];
}
#pragma GCC diagnostic pop

} // namespace

TEST_F(CrashReport, AnOverflowOfTheStackIsReported)
{
    int const status = statusOf([] {
        volatile char start[1] = {0};
        recurse(start);
    });
    EXPECT_EQ(WTERMSIG(status), SIGSEGV);
    EXPECT_THAT(dump(), AllOf(HasSubstr("SIGSEGV"), HasSubstr("#5 ")));
}

TEST_F(CrashReport, ADamagedStackGivesAShorterReport)
{
    TemporaryDirectory const output;
    s_Output = ::open((output / "seen").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    int const status =
        statusOf([] { asm volatile("movq $64, %rbp; movq $64, %rsp; movb $1, 0"); }, describe);
    ::close(s_Output);
    EXPECT_EQ(WTERMSIG(status), SIGSEGV);
    EXPECT_THAT(dump(), HasSubstr("the stack is damaged, its walk was given up\n"));
    EXPECT_THAT(contentOf(output / "seen"), HasSubstr("11 42 " + dumpPath()));
}

TEST_F(CrashReport, AFaultOfAnotherThreadIsReported)
{
    int const status = statusOf([] {
        pthread_t thread;
        ::pthread_create(
            &thread, nullptr,
            [](void *) -> void * {
                touch(forbiddenAddress());
                return nullptr;
            },
            nullptr);
        ::pthread_join(thread, nullptr);
    });
    EXPECT_EQ(WTERMSIG(status), SIGSEGV);
    EXPECT_THAT(dump(), HasSubstr("SIGSEGV"));
}

TEST_F(CrashReport, TwoThreadsAtOnceMakeOneReport)
{
    int const status = statusOf([] {
        pthread_t threads[8];
        for (pthread_t & thread : threads)
            ::pthread_create(
                &thread, nullptr,
                [](void *) -> void * {
                    touch(forbiddenAddress());
                    return nullptr;
                },
                nullptr);
        for (pthread_t thread : threads)
            ::pthread_join(thread, nullptr);
    });
    EXPECT_EQ(WTERMSIG(status), SIGSEGV);
    std::string const text = dump();
    EXPECT_EQ(text.find("Signal: "), text.rfind("Signal: "));
}

TEST_F(CrashReport, ABlockedSignalStillEndsTheProcess)
{
    int const status = statusOf([] {
        sigset_t all;
        ::sigfillset(&all);
        ::sigdelset(&all, SIGABRT);
        ::pthread_sigmask(SIG_SETMASK, &all, nullptr);
        ::raise(SIGABRT);
    });
    EXPECT_EQ(WTERMSIG(status), SIGABRT);
}
