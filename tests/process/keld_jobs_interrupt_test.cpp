#include "process/keld_jobs_program.h"

#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

namespace {

using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::waitForFile;

/// The signals that a user ends a program with, and the one that leaves it no time.
class KeldJobsInterrupt : public testing::TestWithParam<int>
{};

TEST_P(KeldJobsInterrupt, EndsAllWorkersAndTranslators)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    std::filesystem::create_directory(keld.files() / "d");
    pid_t const program =
        keld.start({"import", "-q", "-j", "2", "work.kit", "d/work.kit", "third.kit"});
    ASSERT_TRUE(waitForFile(keld.files() / "work.kit.working"));
    ASSERT_TRUE(waitForFile(keld.files() / "d/work.kit.working"));

    kill(program, GetParam());

    Ended const ended = keld.finish();
    EXPECT_EQ(GetParam(), ended.signal);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ(std::set<std::string>(), keld.temporaryFiles());
}

INSTANTIATE_TEST_SUITE_P(Signals, KeldJobsInterrupt,
                         testing::Values(SIGINT, SIGTERM, SIGHUP, SIGKILL));

TEST(KeldJobsInterruptedEarly, EndTranslatorsThatAreDeaf)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "ignore 15;ignore 2;touch started;forever");
    pid_t const program = keld.start({"import", "-q", "-j", "1", "a.scripted", "b.scripted"});
    ASSERT_TRUE(waitForFile(keld.files() / "started"));
    EXPECT_EQ(1U, keld.temporaryFiles().size());

    kill(program, SIGINT);

    EXPECT_EQ(SIGINT, keld.finish().signal);
    EXPECT_EQ(std::set<std::string>(), keld.temporaryFiles());
}

TEST(KeldJobsInterruptedEarly, EndWorkersThatAreStopped)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "touch started;wait-hangup");
    pid_t const program = keld.start({"import", "-q", "-j", "1", "a.scripted", "b.scripted"});
    ASSERT_TRUE(waitForFile(keld.files() / "started"));
    auto const workers = tests::childrenOf(program);
    ASSERT_EQ(1U, workers.size());
    kill(workers.front(), SIGSTOP);

    kill(program, SIGTERM);

    EXPECT_EQ(SIGTERM, keld.finish().signal);
    EXPECT_EQ(std::set<std::string>(), keld.temporaryFiles());
}

TEST(KeldJobsInterruptedEarly, KeepIgnoringWhatTheirParentIgnored)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.before([] {
        std::signal(SIGHUP, SIG_IGN);
        std::signal(SIGCHLD, SIG_IGN);
    });
    keld.installScripted("scripted", "options;read;frame 123;read;touch started;wait-for go;"
                                     "frame 120 i64 0;read;frame 126;read;frame 126");
    pid_t const program = keld.start({"import", "-q", "a.scripted", "b.scripted"});
    ASSERT_TRUE(waitForFile(keld.files() / "started"));

    kill(program, SIGHUP);
    for (pid_t const worker : tests::childrenOf(program))
        kill(worker, SIGHUP);
    keld.file("go", "");

    EXPECT_EQ(0, keld.finish().code);
}

TEST(KeldJobsInterruptedEarly, EndWhenNobodyReadsWhatTheyPrint)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.before([] {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) == 0)
            dup2(ends[1], STDERR_FILENO);
    });
    keld.installScripted("scripted", "options;read;frame 123;read;touch started;forever");
    keld.start({"import", "-j", "1", "a.scripted", "b.scripted"});

    EXPECT_EQ(SIGPIPE, keld.finish().signal);
    EXPECT_EQ(std::set<std::string>(), keld.temporaryFiles());
}

} // namespace
