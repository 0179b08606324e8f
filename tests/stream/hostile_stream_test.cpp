#include "support/leftovers.h"
#include "support/models.h"
#include "support/segments.h"

#include <keld-transl/process/server.h>
#include <keld-transl/reporting/logger_policy.h>

#include <climits>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace transl_tk {
namespace {

using tests::Bytes;
using tests::ByteString;

class HostileStream : public testing::Test
{
protected:
    HostileStream()
    {
        Point3D::create(100, 1, 2, 3);
        tests::currentSubPool().m_TextList = {"kept"};
        m_Before = tests::points();
    }

    /// Reads `stream` and expects that it is refused with `words` in the sentence and that the
    /// model is as it was.
    void expectRefused(Bytes const & stream, std::string const & words)
    {
        tests::ScopedSegment const segment(m_Name, stream);
        Server::readSharedMem(m_Name, static_cast<long long>(stream.size()));
        EXPECT_NE(Server::exchangeFailure().find(words), std::string::npos)
            << Server::exchangeFailure();
        expectUnchanged();
    }

    void expectUnchanged()
    {
        EXPECT_EQ(tests::points(), m_Before);
        EXPECT_EQ(tests::currentSubPool().m_TextList, (std::vector<std::string>{"kept"}));
        EXPECT_TRUE(tests::currentSubPool().m_FacesToSplit.empty());
        EXPECT_FALSE(tests::currentSubPool()._logger()->hasEntryError(1));
    }

    tests::LeftoverGuard m_Guard;
    tests::ScopedPool m_Pool;
    std::string m_Name = tests::segmentName();
    std::map<int, tests::Coordinates> m_Before;
};

/// A sound stream with something in every section that can hold something.
Bytes soundStream()
{
    ByteString stream;
    stream.i32(0).i32(2);
    stream.i32(1).zeros(24).i32(2).zeros(24);
    stream.zeros(std::size_t{18} * 4);
    stream.i32(1).text("line").i32(1).i32(5);
    stream.i32(1).i32(0).i32(0).i32(0).i32(0).text("log").i32(2).raw({0});
    return stream.bytes();
}

TEST_F(HostileStream, IsRefusedWhereverItIsCut)
{
    Bytes const whole = soundStream();
    for (std::size_t size = 1; size < whole.size(); ++size)
        expectRefused(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)),
                      "The model stream is not sound: section ");
}

TEST_F(HostileStream, SentenceNamesSectionRecordAndByte)
{
    ByteString stream;
    stream.i32(0).i32(2).i32(1).zeros(24).i32(2).zeros(23);
    expectRefused(stream.bytes(), "section 2 (points), record 0, byte 8: a count of 2 needs at "
                                  "least 56 bytes, and 55 are left.");
    ByteString text;
    text.zeros(std::size_t{20} * 4).i32(1).i32(100).zeros(10);
    expectRefused(text.bytes(),
                  "section 21 (text list), record 1, byte 88: a count of 100 needs at "
                  "least 100 bytes, and 10 are left.");
    expectRefused(Bytes(3, 0), "section 1 (facets), record 0, byte 0: a field of 4 bytes runs past "
                               "the end, 3 bytes are left.");
}

TEST_F(HostileStream, CountsThatCannotBeAreRefusedBeforeAnythingIsMade)
{
    for (std::size_t section = 0; section < 27; ++section) {
        Bytes stream(108, 0);
        for (int byte = 0; byte < 3; ++byte)
            stream[section * 4 + static_cast<std::size_t>(byte)] = 0xFF;
        stream[section * 4 + 3] = 0x7F;
        expectRefused(stream, "a count of 2147483647 needs at least");
    }
}

TEST_F(HostileStream, ASegmentSmallerThanAnnouncedIsRefused)
{
    tests::ScopedSegment const segment(m_Name, Bytes(108, 0));
    Server::readSharedMem(m_Name, 109);
    EXPECT_EQ(Server::exchangeFailure(),
              "The shared memory \"" + m_Name + "\" holds 108 bytes where 109 were announced.");
    expectUnchanged();
}

TEST_F(HostileStream, ASegmentThatIsNotThereIsSaid)
{
    Server::readSharedMem(m_Name, 108);
    EXPECT_EQ(Server::exchangeFailure(),
              "Cannot open shared memory \"" + m_Name + "\": there is none of that name.");
    expectUnchanged();
}

TEST_F(HostileStream, BytesBehindTheModelAreNoFault)
{
    tests::ScopedSegment const segment(m_Name, Bytes(4096, 0));
    Server::readSharedMem(m_Name, 4096);
    EXPECT_EQ(Server::exchangeFailure(), "");
}

TEST_F(HostileStream, ReadingWithoutAPoolIsSaid)
{
    Pool::destruct();
    tests::ScopedSegment const segment(m_Name, Bytes(108, 0));
    Server::readSharedMem(m_Name, 108);
    EXPECT_EQ(Server::exchangeFailure(), "There is no pool to read the model into.");
    Pool::construct("again");
}

TEST_F(HostileStream, FailureIsReportedOnceToTheUserAndOnceToTheReport)
{
    Server::echo_start(StreamPolicy::StreamOnly, "");
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    expectRefused(Bytes(3, 0), "section 1");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "    Error : " + Server::exchangeFailure() + "\n");
    EXPECT_EQ(Server::Stream()->getText(), "|STREAM_LOG: " + Server::exchangeFailure() + "\n");
    Server::echo_end();
}

TEST_F(HostileStream, RollingBackKeepsEntitiesThatWereThereBefore)
{
    for (int id = 3; id < 40; id += 3)
        Point3D::create(id, id, id, id);
    m_Before = tests::points();
    ByteString stream;
    stream.i32(0).i32(50);
    for (int id = 1; id <= 50; ++id)
        stream.i32(id).zeros(24);
    stream.zeros(4);
    expectRefused(stream.bytes(), "section 4");
}

TEST_F(HostileStream, NoRandomBytesHarmTheReader)
{
    std::mt19937 random(11);
    Bytes const sound = soundStream();
    for (int round = 0; round < 3000; ++round) {
        Bytes stream = sound;
        for (unsigned flips = 1 + random() % 8; flips != 0; --flips)
            stream[random() % stream.size()] = static_cast<unsigned char>(random());
        tests::ScopedSegment const segment(m_Name, stream);
        Server::readSharedMem(m_Name, static_cast<long long>(stream.size()));
        if (Server::exchangeFailure().empty()) {
            tests::currentSubPool().clear();
            tests::currentSubPool().m_TextList = {"kept"};
            tests::currentSubPool().m_FacesToSplit.clear();
            Point3D::create(100, 1, 2, 3);
        }
        expectUnchanged();
        if (HasFailure())
            break;
    }
}

} // namespace
} // namespace transl_tk
