#include "unit/common/channel_fixture.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>

using namespace tests;

namespace {

class ChannelPipes : public ChannelTest
{
protected:
    static constexpr char s_Echo[] = "exec cat <&3 >&4";
    static constexpr char s_Deaf[] = "exec 3<&-; echo deaf >&4; exec sleep 60";

    static bool isPending(int signal)
    {
        sigset_t pending;
        ::sigpending(&pending);
        return ::sigismember(&pending, signal) == 1;
    }

    static sigset_t only(int signal)
    {
        sigset_t signals;
        ::sigemptyset(&signals);
        ::sigaddset(&signals, signal);
        return signals;
    }

    /// Sends to a translator that has closed its end; what the process does with SIGPIPE is up to
    /// the test.
    static void sendToTheDeaf()
    {
        ASSERT_EQ(open(shell(s_Deaf)), 1);
        EXPECT_EQ(readLine(), "deaf");
        EXPECT_EQ(send("x\n"), 0);
        EXPECT_EQ(record()->ended, 0);
    }
};

volatile std::sig_atomic_t s_Handled = 0;

void countSignal(int)
{
    s_Handled = s_Handled + 1;
}

} // namespace

TEST_F(ChannelPipes, ADoubledPercentGoesOutOnce)
{
    struct Row
    {
        char const * m_Format;
        char const * m_Sent;
    };
    Row const rows[] = {{"a%%b%%%%c\n", "a%b%%c\n"},
                        {"%s%n%d%99999c\n", "%s%n%d%99999c\n"},
                        {"%%%\n", "%%\n"},
                        {"%%%s", "%%s"},
                        {"%", "%"},
                        {"%%", "%"},
                        {"%% %", "% %"}};
    ASSERT_EQ(open(shell(s_Echo)), 1);
    for (Row const & row : rows) {
        std::string const sent = row.m_Sent;
        EXPECT_EQ(send(row.m_Format), static_cast<int>(sent.size())) << row.m_Format;
        EXPECT_EQ(read(sent.size()), sent) << row.m_Format;
    }
}

TEST_F(ChannelPipes, AnEmptyTextSendsNothing)
{
    ASSERT_EQ(open(shell(s_Echo)), 1);
    EXPECT_EQ(send(""), 0);
    EXPECT_EQ(ServerSendValist(KELD_CHANNEL_NUMBER, nullptr), 0);
}

TEST_F(ChannelPipes, ATextLargerThanThePipeArrivesWhole)
{
    std::string const text(300000, 'a');
    ASSERT_EQ(open(shell("sleep 0.1; head -c 300000 <&3 | wc -c >&4")), 1);
    EXPECT_EQ(send(text), 300000);
    EXPECT_EQ(std::stoi(readLine()), 300000);
}

TEST_F(ChannelPipes, ATranslatorThatDiesUnreadLetsTheSenderGo)
{
    ASSERT_EQ(open(shell("sleep 0.1")), 1);
    EXPECT_EQ(send(std::string(300000, 'a')), 0);
}

TEST_F(ChannelPipes, AProcessThatKeepsTheCommandPipeDoesNotHoldTheSender)
{
    ASSERT_EQ(open(shell("sleep 60 & sleep 0.1")), 1);
    EXPECT_EQ(send(std::string(300000, 'a')), 0);
    EXPECT_NE(record()->ended, 0);
}

TEST_F(ChannelPipes, QuitDoesNotWaitForRoomForEver)
{
    ASSERT_EQ(open(shell("trap \"\" TERM; exec sleep 60")), 1);
    std::string const block(4096, 'a');
    for (int count = 0; count < 16; ++count)
        EXPECT_EQ(send(block), 4096);
    EXPECT_EQ(send("q\n"), 0);
}

TEST_F(ChannelPipes, ASendToTheDeadRaisesNoSignal)
{
    sendToTheDeaf();
}

TEST_F(ChannelPipes, ASendToTheDeadDoesNotCallAHandler)
{
    struct sigaction action = {};
    struct sigaction old = {};
    action.sa_handler = countSignal;
    ::sigaction(SIGPIPE, &action, &old);
    s_Handled = 0;
    sendToTheDeaf();
    EXPECT_EQ(s_Handled, 0);
    ::raise(SIGPIPE);
    EXPECT_EQ(s_Handled, 1) << "the handler is still there";
    ::sigaction(SIGPIPE, &old, nullptr);
}

TEST_F(ChannelPipes, ASendToTheDeadKeepsAnIgnoredSignalIgnored)
{
    auto const old = std::signal(SIGPIPE, SIG_IGN);
    sendToTheDeaf();
    EXPECT_EQ(std::signal(SIGPIPE, old), SIG_IGN);
}

TEST_F(ChannelPipes, ASendToTheDeadLeavesABlockedSignalBlockedAndNotPending)
{
    sigset_t const brokenPipe = only(SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
    sendToTheDeaf();
    EXPECT_FALSE(isPending(SIGPIPE));
    sigset_t mask;
    ::pthread_sigmask(SIG_UNBLOCK, &brokenPipe, &mask);
    EXPECT_EQ(::sigismember(&mask, SIGPIPE), 1);
}

TEST_F(ChannelPipes, ASendToTheDeadLeavesAPendingSignalPending)
{
    sigset_t const brokenPipe = only(SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
    ::raise(SIGPIPE);
    sendToTheDeaf();
    EXPECT_TRUE(isPending(SIGPIPE));
    int number = 0;
    if (isPending(SIGPIPE))
        ::sigwait(&brokenPipe, &number);
    ::pthread_sigmask(SIG_UNBLOCK, &brokenPipe, nullptr);
}

TEST_F(ChannelPipes, AReadOutlastsASignal)
{
    struct sigaction action = {};
    struct sigaction old = {};
    action.sa_handler = countSignal;
    ::sigaction(SIGUSR1, &action, &old);
    s_Handled = 0;
    ASSERT_EQ(open(shell("sleep 0.1; kill -USR1 $PPID; sleep 0.1; echo after >&4")), 1);
    EXPECT_EQ(read(), "after\n");
    EXPECT_EQ(s_Handled, 1);
    ::sigaction(SIGUSR1, &old, nullptr);
}

TEST_F(ChannelPipes, AReadTakesAtMostWhatIsAskedFor)
{
    ASSERT_EQ(open(shell("printf abcdef >&4")), 1);
    char text[8] = "-------";
    EXPECT_EQ(pipe_read(record(), text, 3), 3);
    EXPECT_STREQ(text, "abc----");
    EXPECT_EQ(pipe_read(record(), text, 0), 0);
    EXPECT_EQ(read(), "def");
}

TEST_F(ChannelPipes, AReadRefusesWhatMakesNoSense)
{
    ASSERT_EQ(open(shell("exec cat <&3 >&4")), 1);
    char byte = 0;
    ServerControl stranger = {};
    for (int size : {-1, -40960}) {
        errno = 0;
        EXPECT_EQ(pipe_read(record(), &byte, size), -1);
        EXPECT_EQ(errno, EINVAL);
    }
    EXPECT_EQ(pipe_read(&stranger, &byte, 1), -1);
    EXPECT_EQ(pipe_read(nullptr, &byte, 1), -1);
    EXPECT_EQ(pipe_read(record(), nullptr, 1), -1);
}

TEST_F(ChannelPipes, TheEndOfAReceiveLoopDropsWhatIsUnread)
{
    record()->unread = 5;
    ServerEndOk(KELD_CHANNEL_NUMBER);
    EXPECT_EQ(record()->unread, 0);
}
