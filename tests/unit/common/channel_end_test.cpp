#include "unit/common/channel_fixture.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace tests;
using testing::StartsWith;

namespace {

/// The end of a translator with the rest of the test: each test runs under it.
class ChannelEnd : public ChannelTest
{
protected:
    TemporaryDirectory m_Directory;

    std::string file(std::string_view name) const { return m_Directory / name; }

    static void expectEnding(int how, int number)
    {
        TranslatorEnding const ending = ServerGetEnding(KELD_CHANNEL_NUMBER);
        EXPECT_EQ(how, ending.how);
        EXPECT_EQ(number, ending.number);
    }

    static void endNow() { ServerEndNow(KELD_CHANNEL_NUMBER, 50); }
};

} // namespace

TEST_F(ChannelEnd, ATranslatorThatEndedIsReapedAndMarked)
{
    ASSERT_EQ(open("/bin/true"), 1);
    EXPECT_TRUE(comesTrue([] { return record()->ended != 0; }));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    EXPECT_EQ(read(), "");
}

TEST_F(ChannelEnd, ATranslatorThatRunsIsNotMarked)
{
    ASSERT_EQ(open(shell("echo up >&4; read line <&3")), 1);
    EXPECT_EQ(readLine(), "up");
    EXPECT_EQ(record()->ended, 0);
}

TEST_F(ChannelEnd, AKilledTranslatorEndsTheInput)
{
    ASSERT_EQ(open(shell("echo last >&4; kill -9 $$")), 1);
    EXPECT_EQ(read(), "last\n");
    EXPECT_TRUE(comesTrue([] { return record()->ended != 0; }));
}

TEST_F(ChannelEnd, WhatATranslatorWroteIsReadAfterItsEnd)
{
    ASSERT_EQ(open(shell("printf 0123456789 >&4")), 1);
    EXPECT_TRUE(comesTrue([] { return record()->ended != 0; }));
    EXPECT_EQ(read(4), "0123");
    EXPECT_EQ(read(), "456789");
    EXPECT_EQ(read(), "");
}

TEST_F(ChannelEnd, AProcessThatKeepsThePipeDoesNotHoldTheHost)
{
    ASSERT_EQ(open(shell("sleep 60 & echo $! >&4")), 1);
    pid_t const kept = std::stoi(readLine());
    EXPECT_EQ(read(), "");
    EXPECT_NE(record()->ended, 0);
    EXPECT_FALSE(hasGone(kept));
    shutDown();
    EXPECT_TRUE(comesTrue([kept] { return hasGone(kept); }));
}

TEST_F(ChannelEnd, AProcessThatWritesOnDoesNotHoldTheHost)
{
    ASSERT_EQ(open(shell("(while echo more; do :; done) >&4 & echo first >&4")), 1);
    EXPECT_NE(read(), "");
    EXPECT_NE(record()->ended, 0);
}

TEST_F(ChannelEnd, AProcessLeftBehindHasTheGraceTime)
{
    ASSERT_EQ(open(shell("(trap \"\" PIPE; sleep 0.05; echo done > " + file("done") + ") &")), 1);
    EXPECT_TRUE(comesTrue([] { return record()->ended != 0; }));
    shutDown();
    EXPECT_EQ(contentOf(file("done")), "done\n");
}

TEST_F(ChannelEnd, AClosedFramePipeEndsTheInputOfARunningTranslator)
{
    ASSERT_EQ(open(shell("exec 4>&-; read line <&3")), 1);
    EXPECT_EQ(read(), "");
    EXPECT_EQ(record()->ended, 0);
}

TEST_F(ChannelEnd, QuitBoundsTheWaitForASilentTranslator)
{
    ASSERT_EQ(open(shell("echo up >&4; while :; do sleep 60; done")), 1);
    EXPECT_EQ(readLine(), "up");
    EXPECT_EQ(send("q\n"), 2);
    EXPECT_EQ(read(), "");
    EXPECT_EQ(record()->ended, 0);
}

TEST_F(ChannelEnd, QuitBoundsTheInputOfATranslatorThatNeverStops)
{
    ASSERT_EQ(open(shell("while echo more; do :; done >&4")), 1);
    EXPECT_EQ(readLine(), "more");
    send("q\n");
    EXPECT_THAT(read(), StartsWith("more\n"));
}

TEST_F(ChannelEnd, OtherCommandsBoundNothing)
{
    ASSERT_EQ(open(shell("read line <&3; sleep 0.5; echo late >&4")), 1);
    send("q \n");
    EXPECT_EQ(read(), "late\n");
}

TEST_F(ChannelEnd, ATranslatorThatQuitsIsNotSignalled)
{
    ASSERT_EQ(open(shell("trap \"echo term > " + file("term") +
                         "\" TERM; read line <&3; echo $line >&4")),
              1);
    send("q\n");
    EXPECT_EQ(read(), "q\n");
    shutDown();
    EXPECT_FALSE(std::filesystem::exists(file("term")));
}

TEST_F(ChannelEnd, ATranslatorThatEndsWithItsPipeIsNotSignalled)
{
    ASSERT_EQ(open(shell("trap \"echo term > " + file("term") + "\" TERM; echo up >&4; " +
                         "read line <&3; echo closed > " + file("closed"))),
              1);
    EXPECT_EQ(readLine(), "up");
    shutDown();
    EXPECT_EQ(contentOf(file("closed")), "closed\n");
    EXPECT_FALSE(std::filesystem::exists(file("term")));
}

TEST_F(ChannelEnd, ATranslatorThatStaysIsTerminated)
{
    ASSERT_EQ(open(shell("trap \"echo term > " + file("term") + "; exit\" TERM; echo $$ >&4; " +
                         "while :; do sleep 0.01; done")),
              1);
    pid_t const translator = std::stoi(readLine());
    shutDown();
    EXPECT_TRUE(hasGone(translator));
    EXPECT_EQ(contentOf(file("term")), "term\n");
}

TEST_F(ChannelEnd, ATranslatorThatIgnoresTerminationIsKilled)
{
    ASSERT_EQ(open(shell("trap \"\" TERM; echo $$ >&4; while :; do sleep 60; done")), 1);
    pid_t const translator = std::stoi(readLine());
    shutDown();
    EXPECT_TRUE(hasGone(translator));
    EXPECT_NE(record()->ended, 0);
}

KELD_CHILD(leavesItsGroup)
{
    std::signal(SIGTERM, SIG_IGN);
    TranslatorEnds ends = {};
    // The leader of a group cannot start a session; it can join another group of the same session.
    bool const left =
        TranslatorAttach(&ends) == 1 && ::setpgid(0, ::getpgid(ends.hostProcess)) == 0;
    std::string const text = left ? "left\n" : "stayed\n";
    if (::write(ends.frames, text.data(), text.size()) > 0)
        ::sleep(60);
    return 0;
}

TEST_F(ChannelEnd, ATranslatorThatLeftItsGroupIsKilledToo)
{
    ASSERT_EQ(open(childCommand("leavesItsGroup")), 1);
    EXPECT_EQ(readLine(), "left");
    shutDown();
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(ChannelEnd, AStoppedTranslatorIsKilled)
{
    ASSERT_EQ(open(shell("echo $$ >&4; kill -STOP $$")), 1);
    pid_t const translator = std::stoi(readLine());
    shutDown();
    EXPECT_TRUE(hasGone(translator));
}

TEST_F(ChannelEnd, TheWholeGroupIsKilled)
{
    ASSERT_EQ(open(shell("trap \"\" TERM; sleep 60 & echo $! >&4; wait")), 1);
    pid_t const helper = std::stoi(readLine());
    shutDown();
    EXPECT_TRUE(comesTrue([helper] { return hasGone(helper); }));
}

TEST_F(ChannelEnd, AHostMayIgnoreChildren)
{
    expectWellInFork([] {
        std::signal(SIGCHLD, SIG_IGN);
        for (int round = 0; round < 3; ++round) {
            EXPECT_EQ(open(shell("sleep 60 & echo $! >&4")), 1);
            pid_t const kept = std::stoi(readLine());
            EXPECT_EQ(read(), "");
            EXPECT_NE(record()->ended, 0);
            ::kill(kept, SIGKILL);
            shutDown();
            EXPECT_EQ(open("/bin/true"), 1);
            EXPECT_EQ(read(), "");
            shutDown();
        }
        EXPECT_EQ(std::signal(SIGCHLD, SIG_DFL), SIG_IGN);
    });
}

TEST_F(ChannelEnd, AHostMayReapTheTranslatorItself)
{
    ASSERT_EQ(open(shell("sleep 60 & echo $! >&4; read line <&3; echo bye >&4")), 1);
    pid_t const kept = std::stoi(readLine());
    send("go\n");
    EXPECT_GT(::waitpid(-1, nullptr, 0), 0);
    EXPECT_EQ(read(), "bye\n");
    EXPECT_NE(record()->ended, 0);
    shutDown();
    EXPECT_TRUE(comesTrue([kept] { return hasGone(kept); }));
}

TEST_F(ChannelEnd, OtherChildrenOfTheHostAreLeftAlone)
{
    pid_t const other = ::fork();
    if (other == 0)
        ::_exit(7);
    ASSERT_EQ(open("/bin/true"), 1);
    EXPECT_EQ(read(), "");
    shutDown();
    int status = 0;
    EXPECT_EQ(::waitpid(other, &status, 0), other);
    EXPECT_EQ(WEXITSTATUS(status), 7);
}

TEST_F(ChannelEnd, ShuttingDownTwiceDoesNothingMore)
{
    ASSERT_EQ(open("/bin/true"), 1);
    shutDown();
    shutDown();
    char byte = 0;
    EXPECT_EQ(pipe_read(record(), &byte, 1), -1);
    EXPECT_EQ(errno, EBADF);
    EXPECT_EQ(send("x\n"), 0);
}

TEST_F(ChannelEnd, AnUnreadableGraceTimeCountsAsNone)
{
    for (char const * text : {"", "-1", "1s", " 1", "99999999999999999999"}) {
        ScopedEnvironment const grace("KELD_GRACE_MS", text);
        ASSERT_EQ(open(shell("read line <&3")), 1) << text;
        shutDown();
    }
}

TEST_F(ChannelEnd, AnExitCodeIsToldOnceTheTranslatorHasEnded)
{
    ASSERT_EQ(open(shell("echo up >&4; read line <&3; exit 7")), 1);
    EXPECT_EQ(readLine(), "up");
    expectEnding(KELD_ENDING_UNKNOWN, 0);
    send("go\n");
    EXPECT_TRUE(comesTrue([] { return record()->ended != 0; }));
    expectEnding(KELD_ENDING_EXITED, 7);
    shutDown();
    expectEnding(KELD_ENDING_EXITED, 7);
}

TEST_F(ChannelEnd, ASignalIsTold)
{
    for (int const signal : {SIGKILL, SIGTERM, SIGUSR1}) {
        outputOf(shell("kill -" + std::to_string(signal) + " $$"));
        expectEnding(KELD_ENDING_SIGNALLED, signal);
    }
}

TEST_F(ChannelEnd, ATranslatorThatHadToBeTerminatedHasNoEndingOfItsOwn)
{
    ASSERT_EQ(open(shell("trap \"exit 3\" TERM; echo up >&4; while :; do sleep 0.01; done")), 1);
    EXPECT_EQ(readLine(), "up");
    shutDown();
    expectEnding(KELD_ENDING_STOPPED, 0);
}

TEST_F(ChannelEnd, WhoReapsTheTranslatorHimselfIsToldNothing)
{
    ASSERT_EQ(open(shell("read line <&3; exit 7")), 1);
    send("go\n");
    EXPECT_GT(::waitpid(-1, nullptr, 0), 0);
    EXPECT_EQ(read(), "");
    expectEnding(KELD_ENDING_UNKNOWN, 0);
}

TEST_F(ChannelEnd, ANewTranslatorHasNotEnded)
{
    outputOf(shell("exit 7"));
    ASSERT_EQ(open(shell("read line <&3")), 1);
    expectEnding(KELD_ENDING_UNKNOWN, 0);
}

TEST_F(ChannelEnd, TheProcessIsKnownWhileAnythingOfItIsLeft)
{
    EXPECT_EQ(ServerGetProcess(KELD_CHANNEL_NUMBER), 0);
    ASSERT_EQ(open(shell("echo $$ >&4; read line <&3")), 1);
    EXPECT_EQ(ServerGetProcess(KELD_CHANNEL_NUMBER), std::stoi(readLine()));
    shutDown();
    EXPECT_EQ(ServerGetProcess(KELD_CHANNEL_NUMBER), 0);
}

TEST_F(ChannelEnd, AnotherThreadMayEndTheTranslatorAtOnce)
{
    // Far longer than the test may take.
    ScopedEnvironment const grace("KELD_GRACE_MS", "3600000");
    ASSERT_EQ(open(shell("echo up >&4; while :; do sleep 60; done")), 1);
    EXPECT_EQ(readLine(), "up");
    std::thread other(endNow);
    EXPECT_EQ(read(), "");
    other.join();
    shutDown();
    expectEnding(KELD_ENDING_SIGNALLED, SIGTERM);
}

TEST_F(ChannelEnd, WhatIgnoresTerminationIsKilledWithAllThatItStarted)
{
    ScopedEnvironment const grace("KELD_GRACE_MS", "3600000");
    ASSERT_EQ(open(shell("trap \"\" TERM; (while :; do sleep 60; done) & echo $! >&4; wait")), 1);
    pid_t const helper = std::stoi(readLine());
    endNow();
    EXPECT_TRUE(hasGone(helper));
    EXPECT_EQ(read(), "");
    shutDown();
    expectEnding(KELD_ENDING_SIGNALLED, SIGKILL);
}

TEST_F(ChannelEnd, WhatATranslatorLeftBehindIsKilledAtOnceToo)
{
    ScopedEnvironment const grace("KELD_GRACE_MS", "3600000");
    ASSERT_EQ(
        open(shell("(trap \"\" TERM; echo up >&4; while :; do sleep 60; done) & echo $! >&4")), 1);
    std::string const lines = readLine() + readLine();
    pid_t const helper = std::stoi(lines.substr(lines.find_first_of("0123456789")));
    EXPECT_EQ(read(), "");
    endNow();
    EXPECT_TRUE(hasGone(helper));
}

TEST_F(ChannelEnd, AProcessThatNobodyReapsIsNotWaitedFor)
{
    ScopedEnvironment const grace("KELD_GRACE_MS", "3600000");
    expectWellInFork([] {
        // What the translator leaves behind comes to this process, which does not look at it.
        ::prctl(PR_SET_CHILD_SUBREAPER, 1);
        EXPECT_EQ(open(shell("(sleep 0.05 3>&- 4>&-) & echo up >&4")), 1);
        EXPECT_EQ(readLine(), "up");
        shutDown();
        EXPECT_GT(::waitpid(-1, nullptr, WNOHANG), 0);
    });
}

TEST_F(ChannelEnd, ATranslatorThatLeftItsGroupIsKilledAtOnceToo)
{
    ScopedEnvironment const grace("KELD_GRACE_MS", "3600000");
    ASSERT_EQ(open(childCommand("leavesItsGroup")), 1);
    EXPECT_EQ(readLine(), "left");
    endNow();
    EXPECT_EQ(read(), "");
    shutDown();
    expectEnding(KELD_ENDING_SIGNALLED, SIGKILL);
}

TEST_F(ChannelEnd, EndingWhatIsNotThereDoesNothing)
{
    endNow();
    outputOf(shell("exit 7"));
    endNow();
    ServerEndNow(KELD_CHANNEL_NUMBER + 1, 50);
    EXPECT_EQ(ServerGetProcess(KELD_CHANNEL_NUMBER + 1), 0);
    EXPECT_EQ(ServerGetEnding(KELD_CHANNEL_NUMBER + 1).how, KELD_ENDING_UNKNOWN);
    expectEnding(KELD_ENDING_EXITED, 7);
}
