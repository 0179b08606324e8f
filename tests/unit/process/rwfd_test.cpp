#include "support/leftovers.h"

#include <keld-transl/process/rwfd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <optional>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>
#include <vector>

using transl_tk::FrameKey;
using transl_tk::RWFD;

namespace {

/// Two connected ends that keep the borders between writes.
class Ends
{
public:
    Ends()
    {
        if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, m_Ends.data()) != 0)
            throw std::runtime_error("no sockets");
    }
    ~Ends()
    {
        close(m_Ends[0]);
        close(m_Ends[1]);
    }
    Ends(Ends const &) = delete;
    Ends & operator=(Ends const &) = delete;

    int translator() const { return m_Ends[0]; }

    /// What one write on the translator's end brought, in bytes.
    std::vector<int> received() const
    {
        std::array<unsigned char, 8192> block{};
        ssize_t const count = recv(m_Ends[1], block.data(), block.size(), MSG_DONTWAIT);
        return {block.begin(), block.begin() + std::max<ssize_t>(count, 0)};
    }

    void send(std::string const & text) const
    {
        ASSERT_EQ(write(m_Ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    void finish() const { shutdown(m_Ends[1], SHUT_WR); }

private:
    std::array<int, 2> m_Ends{};
};

using Bytes = std::vector<int>;

std::string readText(RWFD & reader, std::string text = "unchanged")
{
    reader.read_fd(text);
    return text;
}

} // namespace

TEST(Frame, OfAKeyAloneIsThreeBytes)
{
    Ends const ends;
    RWFD writer(ends.translator());
    writer.setKey(FrameKey::FrameSkip);
    writer.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{1, 0, 124}));
    EXPECT_EQ(ends.received(), Bytes{});
}

TEST(Frame, TakesTheLowByteOfItsKey)
{
    Ends const ends;
    RWFD writer(ends.translator());
    writer.setKey(0x12345678);
    writer.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{1, 0, 0x78}));
    writer.setKey(-1);
    writer.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{1, 0, 0xFF}));
}

TEST(Frame, PacksValuesLowestByteFirst)
{
    Ends const ends;
    RWFD writer(ends.translator());
    writer.setKey(FrameKey::FrameSuccess);
    writer.appendInt(0x01020304);
    writer.appendInt64(0x1112131415161718);
    writer.appendFloat(-1.5F);
    writer.appendDouble(2.5);
    writer.write_fd();
    EXPECT_EQ(ends.received(),
              (Bytes{25,   0, 120, 4,    3,    2, 1, 0x18, 0x17, 0x16, 0x15, 0x14, 0x13, 0x12,
                     0x11, 0, 0,   0xC0, 0xBF, 0, 0, 0,    0,    0,    0,    4,    0x40}));
}

TEST(Frame, PacksNegativeNumbers)
{
    Ends const ends;
    RWFD writer(ends.translator());
    writer.setKey(FrameKey::FrameExit);
    writer.appendInt(-2);
    writer.appendInt64(-2);
    writer.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{13, 0, 122, 0xFE, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF,
                                      0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST(Frame, IsKeptAfterItWasWritten)
{
    Ends const ends;
    RWFD writer(ends.translator());
    writer.setKey(121);
    writer.appendInt(1);
    writer.write_fd();
    writer.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{5, 0, 121, 1, 0, 0, 0}));
    EXPECT_EQ(ends.received(), (Bytes{5, 0, 121, 1, 0, 0, 0}));
    writer.appendInt(2);
    writer.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{9, 0, 121, 1, 0, 0, 0, 2, 0, 0, 0}));
}

TEST(Frame, BeginsAnewWithItsKey)
{
    Ends const ends;
    RWFD writer(ends.translator());
    writer.setKey(121);
    writer.appendInt(1);
    writer.setKey(126);
    writer.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{1, 0, 126}));
}

TEST(Frame, BeforeAnyKeyIsEmpty)
{
    Ends const ends;
    RWFD writer(ends.translator());
    writer.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{0, 0}));
}

TEST(Frame, HoldsAtMost4095BytesAndGoesOutInOneWrite)
{
    Ends const ends;
    RWFD writer(ends.translator());
    writer.setKey(120);
    for (int i = 0; i < 600; ++i)
        writer.appendInt64(-1);
    // 1 + 511 * 8 = 4089 bytes: an int fits twice no more.
    writer.appendInt(7);
    writer.appendInt(8);
    writer.appendDouble(1);
    writer.appendFloat(1);
    writer.write_fd();

    Bytes expected{4093 % 256, 4093 / 256, 120};
    expected.insert(expected.end(), 4088, 0xFF);
    expected.insert(expected.end(), {7, 0, 0, 0});
    EXPECT_EQ(ends.received(), expected);
}

TEST(Frame, ThatCannotBeWrittenIsLostSilently)
{
    RWFD writer(-1);
    writer.setKey(120);
    testing::internal::CaptureStderr();
    writer.write_fd();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Frame, KeysHaveTheirNumbers)
{
    EXPECT_EQ(FrameKey::FrameSuccess, 'x');
    EXPECT_EQ(FrameKey::FrameProgress, 'y');
    EXPECT_EQ(FrameKey::FrameExit, 'z');
    EXPECT_EQ(FrameKey::FrameFileNameAccepted, '{');
    EXPECT_EQ(FrameKey::FrameSkip, '|');
    EXPECT_EQ(FrameKey::FrameEnd, '~');
    EXPECT_EQ(FrameKey::FrameStatus, 127);
}

TEST(Frame, WriterLeavesTheDescriptorToItsOwner)
{
    Ends const ends;
    {
        tests::LeftoverGuard const guard;
        RWFD const writer(ends.translator());
    }
    RWFD writer(ends.translator());
    writer.setKey(126);
    writer.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{1, 0, 126}));
}

TEST(Frame, WriterMayGoBeforeItsCopy)
{
    Ends const ends;
    std::optional<RWFD> writer(ends.translator());
    writer->setKey(121);
    writer->appendInt(1);
    RWFD copy(*writer);
    RWFD assigned(-1);
    assigned = *writer;
    writer.reset();
    copy.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{5, 0, 121, 1, 0, 0, 0}));
    assigned.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{5, 0, 121, 1, 0, 0, 0}));
}

TEST(Frame, CopiesShareTheRecord)
{
    Ends const ends;
    RWFD writer(ends.translator());
    writer.setKey(121);
    RWFD copy(writer);
    copy.setKey(122);
    writer.write_fd();
    EXPECT_EQ(ends.received(), (Bytes{1, 0, 122}));
}

TEST(Command, IsWhatOneReadBrings)
{
    Ends const ends;
    RWFD reader(ends.translator());
    ends.send("f /a b.xyz\n");
    ends.send("q\n");
    EXPECT_EQ(readText(reader), "f /a b.xyz\n");
    EXPECT_EQ(readText(reader), "q\n/a b.xyz\n");
}

TEST(Command, OfOneByteHasTheOlderBytesBehindIt)
{
    Ends const ends;
    RWFD reader(ends.translator());
    ends.send("abcdef");
    ends.send("X");
    EXPECT_EQ(readText(reader), "abcdef");
    EXPECT_EQ(readText(reader), "Xbcdef");
}

TEST(Command, EndsAtItsFirstZeroByte)
{
    Ends const ends;
    RWFD reader(ends.translator());
    ends.send(std::string("ab\0cd", 5));
    EXPECT_EQ(readText(reader), "ab");
}

TEST(Command, IsReadInBlocksOf4096Bytes)
{
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    std::string const first(4096, 'a');
    std::string const sent = first + std::string(100, 'b');
    ASSERT_EQ(write(pipe[1], sent.data(), sent.size()), static_cast<ssize_t>(sent.size()));
    RWFD reader(pipe[0]);
    EXPECT_EQ(readText(reader), first);
    EXPECT_EQ(readText(reader), std::string(100, 'b') + std::string(3996, 'a'));
    close(pipe[0]);
    close(pipe[1]);
}

TEST(Command, IsLeftAsItWasAtTheEndOfInput)
{
    Ends const ends;
    RWFD reader(ends.translator());
    ends.send("abc");
    ends.finish();
    EXPECT_EQ(readText(reader), "abc");
    EXPECT_EQ(readText(reader), "unchanged");
    EXPECT_EQ(readText(reader), "unchanged");
}

TEST(Command, IsLeftAsItWasOnAClosedDescriptor)
{
    RWFD reader(-1);
    EXPECT_EQ(readText(reader), "unchanged");
}

namespace {

int interruptedEnd = -1;

void sendFromHandler(int)
{
    [[maybe_unused]] auto const written = write(interruptedEnd, "q\n", 2);
}

} // namespace

TEST(Command, IsWaitedForThroughAnInterruption)
{
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    interruptedEnd = pipe[1];
    struct sigaction action = {};
    action.sa_handler = sendFromHandler;
    struct sigaction old = {};
    ASSERT_EQ(sigaction(SIGALRM, &action, &old), 0);
    itimerval const soon{{0, 0}, {0, 100000}};
    ASSERT_EQ(setitimer(ITIMER_REAL, &soon, nullptr), 0);

    RWFD reader(pipe[0]);
    EXPECT_EQ(readText(reader), "q\n");

    sigaction(SIGALRM, &old, nullptr);
    close(pipe[0]);
    close(pipe[1]);
}

TEST(ReadLine, EndsBeforeTheFirstLineFeed)
{
    EXPECT_EQ(RWFD::readLine("q\n"), "q");
    EXPECT_EQ(RWFD::readLine("f /a b\n-----\n--"), "f /a b");
    EXPECT_EQ(RWFD::readLine("\nabc"), "");
    EXPECT_EQ(RWFD::readLine("a\r\nb"), "a\r");
}

TEST(ReadLine, GivesATextWithoutLineFeedWhole)
{
    EXPECT_EQ(RWFD::readLine("q"), "q");
    EXPECT_EQ(RWFD::readLine(""), "");
}
