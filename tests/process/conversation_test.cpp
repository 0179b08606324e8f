#include "process/scripted_host.h"
#include "support/leftovers.h"
#include "support/slots.h"

#include <keld-common/channel.h>
#include <keld-transl/process/client.h>
#include <keld-transl/process/server.h>

#include <cstdio>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace transl_tk {
namespace {

using testing::ElementsAre;

/// What the receive loop handed over: "<key> <has payload> <payload in hex>".
struct Received
{
    static bool onFrame(char * buffer, int & position, bool const & hasPayload, int & key,
                        void * context)
    {
        auto & self = *static_cast<Received *>(context);
        EXPECT_EQ(position, 1);
        EXPECT_EQ(key, static_cast<signed char>(buffer[0]));
        std::string line = std::to_string(key) + (hasPayload ? " +" : " -");
        for (int i = 0; i < self.m_Payload && hasPayload; ++i) {
            char hex[4];
            std::snprintf(hex, sizeof(hex), " %02x", static_cast<unsigned char>(buffer[1 + i]));
            line += hex;
        }
        self.m_Frames.push_back(line);
        // The loop goes by the frame's length, whatever a handler does to the position or answers.
        position += 17;
        return false;
    }

    int m_Payload = 0; ///< bytes of payload to look at
    std::vector<std::string> m_Frames;
};

class ReceiveLoop : public testing::Test
{
protected:
    /// Runs the scripted translator and receives until the loop ends.
    Received receive(std::string const & script, int payload = 0)
    {
        Received received;
        received.m_Payload = payload;
        Server::create(true);
        Server::open("transl_tk_server", tests::scriptedCommand(script), "");
        EXPECT_TRUE(Server::isOpen());
        Server::wait(&Received::onFrame, &received);
        Server::shutdown();
        EXPECT_FALSE(Server::isOpen());
        return received;
    }

    tests::ScopedEnvironment m_Grace{"KELD_GRACE_MS", "300"};
    tests::LeftoverGuard m_Guard;
};

TEST_F(ReceiveLoop, HandsOverFramesUntilTheEndMark)
{
    auto const received = receive("frame 121 i32 5; frame 123; frame 126; frame 127 i32 1", 4);
    EXPECT_THAT(received.m_Frames, ElementsAre("121 + 05 00 00 00", "123 -"));
}

TEST_F(ReceiveLoop, DropsSkipsOfOneByteAlone)
{
    auto const received = receive("frame 124; frame 123; bytes 02007c09; frame 126", 1);
    EXPECT_THAT(received.m_Frames, ElementsAre("123 -", "124 + 09"));
}

TEST_F(ReceiveLoop, EndsAtAMarkOfOneByteAlone)
{
    auto const received = receive("bytes 02007e09; frame 123; frame 126; frame 125", 1);
    EXPECT_THAT(received.m_Frames, ElementsAre("126 + 09", "123 -"));
}

TEST_F(ReceiveLoop, KeyIsASignedByte)
{
    auto const received = receive("bytes 0100ff; bytes 010080; bytes 010000; frame 126");
    EXPECT_THAT(received.m_Frames, ElementsAre("-1 -", "-128 -", "0 -"));
}

TEST_F(ReceiveLoop, FramesMayBeCutAtEveryByte)
{
    // Three frames and the end mark: 0700 79 010203040506, 0100 7b, 0300 41 aabb, 0100 7e.
    std::string const stream = "070079010203040506"
                               "01007b"
                               "030041aabb"
                               "01007e";
    std::size_t const bytes = stream.size() / 2;
    for (std::size_t first = 1; first < bytes; ++first) {
        auto const received = receive("bytes " + stream.substr(0, 2 * first) + "; drain; bytes " +
                                          stream.substr(2 * first),
                                      2);
        ASSERT_THAT(received.m_Frames, ElementsAre("121 + 01 02", "123 -", "65 + aa bb"))
            << "cut behind byte " << first;
    }
}

TEST_F(ReceiveLoop, FramesMayComeByteByByte)
{
    std::string script;
    for (char const * const byte :
         {"03", "00", "41", "aa", "bb", "01", "00", "7b", "01", "00", "7e"})
        script += std::string("bytes ") + byte + "; drain; ";
    EXPECT_THAT(receive(script, 2).m_Frames, ElementsAre("65 + aa bb", "123 -"));
}

/// A frame of `length` bytes whose key is 65 and whose values are all 0x11.
std::string longFrame(int length)
{
    char head[12];
    std::snprintf(head, sizeof(head), "%02x%02x41", length & 0xFF, length >> 8);
    std::string hex = head;
    for (int i = 1; i < length; ++i)
        hex += "11";
    return hex;
}

TEST_F(ReceiveLoop, AFrameAcrossTheBuffersEndIsMovedToItsStart)
{
    auto const received = receive(
        "bytes " + longFrame(30000) + "; bytes " + longFrame(30000) + "; frame 123; frame 126", 1);
    EXPECT_THAT(received.m_Frames, ElementsAre("65 + 11", "65 + 11", "123 -"));
}

TEST_F(ReceiveLoop, TheLargestFrameIsAsLargeAsTheBuffer)
{
    auto const received =
        receive("bytes " + longFrame(KELD_RECEIVE_BUFFER_SIZE) + "; frame 123; frame 126", 1);
    EXPECT_THAT(received.m_Frames, ElementsAre("65 + 11", "123 -"));
}

TEST_F(ReceiveLoop, AFrameLargerThanTheBufferIsGivenUpAndTheLoopGoesOn)
{
    // What is unread when the frame is given up goes with it; the end of input then ends the loop.
    auto const received =
        receive("bytes " + longFrame(KELD_RECEIVE_BUFFER_SIZE + 1) + "; drain; close frames");
    EXPECT_THAT(received.m_Frames, ElementsAre());
}

TEST_F(ReceiveLoop, AnEmptyFrameFirstSkipsNothing)
{
    auto const received = receive("bytes 000001007b01007e");
    EXPECT_THAT(received.m_Frames, ElementsAre("123 -"));
}

TEST_F(ReceiveLoop, AnEmptyFrameSkipsTheLengthOfTheFrameBeforeIt)
{
    // After the frame of three bytes the empty one steps over three more, aabbcc.
    auto const received = receive("bytes 030041010200"
                                  "00aabbcc"
                                  "01007b"
                                  "01007e");
    EXPECT_THAT(received.m_Frames, ElementsAre("65 +", "123 -"));
}

TEST_F(ReceiveLoop, AnEmptyFrameAtTheEndOfInputHarmsNothing)
{
    std::string frame = longFrame(40000);
    auto const received = receive("bytes " + frame + "; bytes 0000; drain; bytes 0000; drain");
    EXPECT_THAT(received.m_Frames, ElementsAre("65 +"));
}

TEST_F(ReceiveLoop, AFrameCutByTheEndOfInputIsDropped)
{
    EXPECT_THAT(receive("frame 123; bytes 0500790102").m_Frames, ElementsAre("123 -"));
    EXPECT_THAT(receive("frame 123; bytes 05").m_Frames, ElementsAre("123 -"));
    EXPECT_THAT(receive("frame 123; bytes 0500").m_Frames, ElementsAre("123 -"));
}

TEST_F(ReceiveLoop, WhatTheTranslatorPrintsDoesNotDisturbIt)
{
    testing::internal::CaptureStdout();
    auto const received = receive("frame 123; print ~|{ not a frame; frame 121 i32 1; frame 126");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "~|{ not a frame\n");
    EXPECT_THAT(received.m_Frames, ElementsAre("123 -", "121 +"));
}

TEST_F(ReceiveLoop, EndsWhenTheTranslatorDies)
{
    EXPECT_THAT(receive("frame 123; die 9").m_Frames, ElementsAre("123 -"));
}

TEST_F(ReceiveLoop, EndsWhenTheTranslatorClosesItsPipeAndLives)
{
    EXPECT_THAT(receive("frame 123; close frames; forever").m_Frames, ElementsAre("123 -"));
}

TEST(ServerWithoutChannel, SendsWaitsAndShutsDownQuietly)
{
    Received received;
    Server::send("q\n");
    Server::wait(&Received::onFrame, &received);
    Server::shutdown();
    EXPECT_TRUE(received.m_Frames.empty());
    EXPECT_FALSE(Server::isOpen());
    EXPECT_FALSE(Server::isRemote());
}

TEST(ServerWithoutChannel, OpensNothingUnlessItIsRemote)
{
    tests::LeftoverGuard const guard;
    Server::open("transl_tk_server", tests::scriptedCommand("forever"), "");
    EXPECT_FALSE(Server::isOpen());
}

TEST(Server, TypeIsOneAtFirstAndAsksForAllBits)
{
    EXPECT_EQ(Server::ServerType(), 1U);
    EXPECT_TRUE(Server::IsServerOfType(1));
    EXPECT_TRUE(Server::IsServerOfType(3));
    EXPECT_FALSE(Server::IsServerOfType(2));
    Server::SetServerType(6);
    EXPECT_TRUE(Server::IsServerOfType(6));
    EXPECT_TRUE(Server::IsServerOfType(14));
    EXPECT_FALSE(Server::IsServerOfType(2));
    EXPECT_FALSE(Server::IsServerOfType(4));
}

TEST(Server, KnowsWhetherACommandCouldBeStarted)
{
    EXPECT_TRUE(Server::exist(KELD_TEST_SCRIPTED_TRANSLATOR));
    EXPECT_TRUE(Server::exist(tests::scriptedCommand("exit 1").c_str()));
    EXPECT_FALSE(Server::exist("/no/such/translator"));
    EXPECT_FALSE(Server::exist("/tmp"));
    EXPECT_FALSE(Server::exist(""));
}

TEST(Client, TableHasItsOrder)
{
    using tests::slotOf;
    EXPECT_EQ(slotOf(&Client::toolkitTitle), 0U);
    // The destructor takes places 1 and 2.
    EXPECT_EQ(slotOf(&Client::getSharedMemName), 3U);
    EXPECT_EQ(slotOf(&Client::getMode), 4U);
    EXPECT_EQ(slotOf(&Client::setProgress), 5U);
    EXPECT_EQ(slotOf(&Client::setStatus), 6U);
    EXPECT_EQ(slotOf(&Client::getExecCmd), 7U);
    EXPECT_EQ(slotOf(&Client::getLibPath), 8U);
    EXPECT_EQ(slotOf(&Client::fillOptions), 9U);
    EXPECT_EQ(slotOf(&Client::onSuccess), 10U);
    EXPECT_EQ(slotOf(&Client::onFilePathNameOk), 11U);
    EXPECT_EQ(slotOf(&Client::onExit), 12U);
    EXPECT_EQ(slotOf(&Client::onProgress), 13U);
    EXPECT_EQ(slotOf(&Client::onStatus), 14U);
    EXPECT_EQ(slotOf(&ClientIn::transferModel), 15U);
    EXPECT_EQ(slotOf(&ClientIn::importStarted), 16U);
    EXPECT_EQ(slotOf(&ClientIn::confirmImport), 17U);
    EXPECT_EQ(slotOf(&ClientOut::transferModel), 15U);
}

TEST(Client, StatusHasItsWords)
{
    tests::ImportHost host;
    EXPECT_EQ(host.serverExitStatus(), 8U);
    std::vector<std::pair<unsigned, std::string>> const words = {
        {0, "Failed!"},
        {1, "Export procedure failed"},
        {2, "Failed! Unsupported file type"},
        {3, "Failed! Model is empty"},
        {4, "Unexpected error!"},
        {5, "Failed! Missing export info"},
        {6, "Unexpected error!"},
        {7, "Unexpected error!"},
        {8, "Completed!"},
        {9, "Server cancelled"},
        {10, "Unexpected error!"},
        {11, "Unexpected error!"},
        {4000000000U, "Unexpected error!"},
    };
    for (auto const & [status, text] : words) {
        host.setServerExitStatus(status);
        EXPECT_EQ(host.serverExitStatus(), status);
        EXPECT_EQ(host.serverExitStatusMsg(), text) << status;
    }
}

TEST(Client, HasNoTitleAndNoFileNameAtFirst)
{
    tests::ImportHost host;
    EXPECT_EQ(host.toolkitTitle(), "");
    EXPECT_EQ(host.getFileName(), "");
    host.setFileName("part.xyz");
    host.setFileName(host.getFileName());
    EXPECT_EQ(host.getFileName(), "part.xyz");
}

TEST(Client, CopiesShareTheirOptionsForAsLongAsOneLives)
{
    auto original = std::make_unique<tests::ImportHost>();
    original->getExecIO()->addOption(IOption::create("name", "description"));
    original->setServerExitStatus(3);
    original->setFileName("file");
    tests::ImportHost const copy(*original);
    EXPECT_EQ(copy.getExecIO(), original->getExecIO());
    EXPECT_EQ(copy.serverExitStatus(), 3U);
    EXPECT_EQ(copy.getFileName(), "file");
    original.reset();
    EXPECT_EQ(copy.getExecIO()->size(), 1);
    EXPECT_STREQ(copy.getExecIO()->getOption(0)->getName(), "name");
}

TEST(Client, DispatchesEachMessageAndIgnoresStrayOnes)
{
    tests::ImportHost host;
    char buffer[16] = {};
    int const seven = 7;
    std::memcpy(buffer + 1, &seven, sizeof(seven));
    auto const dispatch = [&](int id) {
        int position = 1;
        EXPECT_TRUE(Client::wait(buffer, position, true, id, &host));
        return position;
    };
    EXPECT_EQ(dispatch(121), 5);
    EXPECT_EQ(dispatch(127), 5);
    EXPECT_EQ(dispatch(122), 13);
    EXPECT_EQ(host.serverExitStatus(), 7U);
    host.setFileName("file");
    EXPECT_EQ(dispatch(123), 1);
    for (int const stray : {0, 119, 124, 125, 126, 128, -1})
        EXPECT_EQ(dispatch(stray), 1);
    EXPECT_THAT(host.m_Notes,
                ElementsAre("progress 7", "status 7", "confirm import", "import started"));
}

} // namespace
} // namespace transl_tk
