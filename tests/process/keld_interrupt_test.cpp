#include "process/keld_program.h"

#include <csignal>
#include <gmock/gmock.h>

namespace {

using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::waitForFile;

/// The signals that a user ends a program with, and the one that leaves it no time.
class KeldInterrupt : public testing::TestWithParam<int>
{};

TEST_P(KeldInterrupt, EndsATranslatorThatReads)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    pid_t const program = keld.start({"import", "-q", "work.kit"});
    ASSERT_TRUE(waitForFile(keld.files() / "work.kit.working"));

    kill(program, GetParam());

    EXPECT_EQ(GetParam(), keld.finish().signal);
    EXPECT_EQ(std::set<std::string>(), keld.temporaryFiles());
}

TEST_P(KeldInterrupt, EndsATranslatorThatWritesAndKeepsTheOldFile)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    std::string const target = keld.file("write-and-work.kit", "old");
    pid_t const program = keld.start({"export", "-q", "write-and-work.kit", "--points", "1000"});
    ASSERT_TRUE(waitForFile(target + ".working"));

    kill(program, GetParam());

    EXPECT_EQ(GetParam(), keld.finish().signal);
    EXPECT_EQ("old", tests::contentOf(target));
    EXPECT_EQ(
        (std::set<std::string>{"installation", "write-and-work.kit", "write-and-work.kit.working"}),
        keld.files().names());
}

/// The signals that a program can act on.
class KeldInterruptCaught : public testing::TestWithParam<int>
{
protected:
    /// Sends the signal once the program's translator has made the file `started`, and expects the
    /// program to be gone with everything.
    static void interrupt(KeldProgram & keld, pid_t program, std::string const & started)
    {
        ASSERT_TRUE(waitForFile(keld.files() / started));
        kill(program, GetParam());
        Ended const ended = keld.finish();
        EXPECT_FALSE(tests::segmentIsThere("keld_" + std::to_string(program) + "_1"));
        EXPECT_EQ(GetParam(), ended.signal);
        EXPECT_EQ("", ended.out);
        EXPECT_EQ("", ended.err);
        EXPECT_EQ(std::set<std::string>(), keld.temporaryFiles());
    }
};

TEST_P(KeldInterruptCaught, EndsATranslatorThatIgnoresEverything)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "ignore 1;ignore 2;ignore 15;options;read;frame 123;read;"
                                     "create-segment 100000;touch started;forever");
    interrupt(keld, keld.start({"import", "-q", "f.scripted"}), "started");
}

TEST_P(KeldInterruptCaught, EndsATranslatorThatNeverTakesACommand)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "ignore 1;ignore 2;ignore 15;touch started;forever");
    interrupt(keld, keld.start({"export", "-q", "f.scripted", "--points", "10"}), "started");
}

TEST_P(KeldInterruptCaught, EndsATranslatorThatWorksAndIgnoresEverything)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    interrupt(keld, keld.start({"import", "-q", "stuck.kit"}), "stuck.kit.working");
}

TEST_P(KeldInterruptCaught, EndsATranslatorBelowAScriptThatWaitsForIt)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "ignore 1;ignore 2;ignore 15;options;read;frame 123;read;"
                                     "create-segment 100000;touch started;forever");
    tests::waitInScript(keld, "scripted");
    interrupt(keld, keld.start({"import", "-q", "f.scripted"}), "started");
}

TEST_P(KeldInterruptCaught, EndsATranslatorThatTalksForever)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "ignore 1;ignore 2;ignore 15;options;read;frame 123;read;"
                                     "touch started;flood");
    interrupt(keld, keld.start({"import", "-q", "f.scripted"}), "started");
}

INSTANTIATE_TEST_SUITE_P(Signals, KeldInterruptCaught, testing::Values(SIGINT, SIGTERM, SIGHUP));

INSTANTIATE_TEST_SUITE_P(Signals, KeldInterrupt, testing::Values(SIGINT, SIGTERM, SIGHUP, SIGKILL));

TEST(KeldInterruptedEarly, RemovesTheOptionsFileThatNobodyRead)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "touch started;wait-hangup");
    pid_t const program = keld.start({"import", "-q", "f.scripted"});
    ASSERT_TRUE(waitForFile(keld.files() / "started"));
    EXPECT_EQ(1U, keld.temporaryFiles().size());

    kill(program, SIGINT);

    EXPECT_EQ(SIGINT, keld.finish().signal);
    EXPECT_EQ(std::set<std::string>(), keld.temporaryFiles());
}

TEST(KeldInterruptedEarly, LetsGoOfTheModelThatItExports)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "options;read;frame 123;read;touch started;wait-hangup");
    pid_t const program = keld.start({"export", "-q", "f.scripted", "--points", "1000"});
    ASSERT_TRUE(waitForFile(keld.files() / "started"));
    std::string const segment = "keld_" + std::to_string(program) + "_1";
    EXPECT_TRUE(tests::segmentIsThere(segment));

    kill(program, SIGTERM);

    EXPECT_EQ(SIGTERM, keld.finish().signal);
    EXPECT_FALSE(tests::segmentIsThere(segment));
}

TEST(KeldInterruptedEarly, KeepsIgnoringWhatItsParentIgnored)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.before([] { std::signal(SIGHUP, SIG_IGN); });
    keld.installScripted("scripted", "options;read;frame 123;read;touch started;wait-for go;"
                                     "frame 120 i64 0;read;frame 126;read;frame 126");
    pid_t const program = keld.start({"import", "-q", "f.scripted"});
    ASSERT_TRUE(waitForFile(keld.files() / "started"));

    kill(program, SIGHUP);
    keld.file("go", "");

    EXPECT_EQ(0, keld.finish().code);
}

} // namespace
