#include "support/child.h"
#include "support/leftovers.h"
#include "support/models.h"
#include "support/segments.h"

#include <keld-transl/process/server.h>
#include <keld-transl/reporting/logger_policy.h>

#include <bit>
#include <climits>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

namespace transl_tk {
namespace {

using tests::Bytes;
using tests::ByteString;

/// Counts of sections 1 to 20, each 0: an entity section, or the attributes or report entries.
constexpr std::size_t EmptyBeforeTexts = std::size_t{20} * 4;
/// The five counts that open the log.
constexpr std::size_t EmptyLog = std::size_t{5} * 4;

class ModelStream : public testing::Test
{
protected:
    long long write() { return Server::writeSharedMem(m_Name); }

    /// Writes the current model into a segment and gives its bytes.
    Bytes bytesOfModel()
    {
        write();
        Bytes bytes = tests::segmentBytes(m_Name);
        Server::unmapSharedMemory(false);
        return bytes;
    }

    tests::LeftoverGuard m_Guard;
    tests::ScopedPool m_Pool;
    std::string m_Name = tests::segmentName();
};

TEST_F(ModelStream, EmptyModelIs108BytesOfZero)
{
    EXPECT_EQ(write(), 108);
    EXPECT_EQ(tests::segmentBytes(m_Name), Bytes(108, 0));
    Server::unmapSharedMemory(false);
}

TEST_F(ModelStream, OnePointIs136Bytes)
{
    Point3D::create(7, 1.0, 2.0, 3.0);
    Bytes expected(136, 0);
    expected[4] = 1; // the count of section 2
    expected[8] = 7; // the id
    // 1.0, 2.0 and 3.0 as IEEE 754 doubles, least significant byte first.
    expected[12 + 6] = 0xF0;
    expected[12 + 7] = 0x3F;
    expected[20 + 7] = 0x40;
    expected[28 + 6] = 0x08;
    expected[28 + 7] = 0x40;
    EXPECT_EQ(bytesOfModel(), expected);
}

TEST_F(ModelStream, PointsStandInAscendingOrderOfIds)
{
    for (int const id : {9, -2, 300})
        Point3D::create(id, 0, 0, 0);
    ByteString expected;
    expected.i32(0).i32(3);
    for (int const id : {-2, 9, 300})
        expected.i32(id).zeros(24);
    expected.zeros(108 - 8);
    EXPECT_EQ(bytesOfModel(), expected.bytes());
}

TEST_F(ModelStream, TextLinesFacesToSplitAndLogStandAtTheEnd)
{
    SubPool & model = tests::currentSubPool();
    model.m_TextList = {"ab", std::string("c\0d", 3), ""};
    model.m_FacesToSplit = {8, 5, 8};
    using cad::ILoggerPolicy;
    model._logger()->addEntry("six", 6, ILoggerPolicy::ErrorLine, false);
    model._logger()->addEntry("five", 5, ILoggerPolicy::Text, false);
    model._logger()->addEntry("one", 1, ILoggerPolicy::WarningLine, false);
    model._logger()->addEntry("one more", 1, ILoggerPolicy::Indented, false);
    model._logger()->addEntry("four", 4, static_cast<ILoggerPolicy::SubType>(77), true);
    ByteString expected;
    expected.zeros(EmptyBeforeTexts);
    expected.i32(3).text("ab").text("c").text("");
    expected.i32(2).i32(5).i32(8);
    expected.i32(2).i32(0).i32(0).i32(1).i32(1);
    expected.text("one").i32(3).raw({0});
    expected.text("one more").i32(1).raw({0});
    expected.text("four").i32(77).raw({1});
    expected.text("six").i32(2).raw({0});
    EXPECT_EQ(bytesOfModel(), expected.bytes());
}

TEST_F(ModelStream, TwoRunsOnOneModelGiveTheSameBytes)
{
    for (int const id : {30, 10, 20})
        Point3D::create(id, id, 0, 0);
    Bytes const first = bytesOfModel();
    m_Name = tests::segmentName();
    EXPECT_EQ(bytesOfModel(), first);
}

TEST_F(ModelStream, SizeIsReturnedThoughAnEmptyNameWritesNothing)
{
    Point3D::create(0, 0, 0, 0);
    EXPECT_EQ(Server::writeSharedMem(""), 136);
    EXPECT_EQ(Server::exchangeFailure(), "");
}

TEST_F(ModelStream, ATakenNameIsSaidAndTheSizeReturned)
{
    tests::ScopedSegment const taken(m_Name, Bytes(10, 1));
    tests::Child other([&] {
        Pool::getInstance()->newWorkingSubPool("other");
        long long const size = write();
        bool const said = Server::exchangeFailure() == "Cannot create shared memory \"" + m_Name +
                                                           "\": the name is taken by a running "
                                                           "process.";
        Server::unmapSharedMemory(true);
        return size == 108 && said ? 0 : 1;
    });
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(tests::segmentBytes(m_Name), Bytes(10, 1));
}

TEST_F(ModelStream, ArrivesInAnotherProcessWithTheSameIds)
{
    double const nan = std::bit_cast<double>(std::uint64_t{0x7FF0000000000001});
    Point3D::create(INT_MIN, -0.0, nan, std::numeric_limits<double>::infinity());
    Point3D::create(-1, 1, 2, 3);
    Point3D::create(70000, std::numeric_limits<double>::denorm_min(), 1e308, 0.1);
    Point3D::create(INT_MAX, 4, 5, 6);
    tests::currentSubPool().m_TextList = {"first", "second"};
    tests::currentSubPool().m_FacesToSplit = {3, 1};
    tests::currentSubPool()._logger()->addEntry("words", 2, cad::ILoggerPolicy::ErrorLine, false);
    long long const size = write();
    Bytes const written = tests::segmentBytes(m_Name);
    tests::Child reader([&] {
        while (Pool::hasInstance())
            Pool::destruct();
        Pool::construct("arrived");
        Server::readSharedMem(m_Name, size);
        std::string const again = m_Name + " again";
        if (!Server::exchangeFailure().empty() || Server::writeSharedMem(again) != size)
            return 1;
        bool const same = tests::segmentBytes(again) == written;
        Server::unmapSharedMemory(true);
        return same && tests::points().size() == 4 ? 0 : 2;
    });
    EXPECT_EQ(reader.wait(), 0);
    Server::unmapSharedMemory(false);
}

TEST_F(ModelStream, AddsToWhatIsThere)
{
    Point3D::create(1, 1, 1, 1);
    Point3D::create(2, 2, 2, 2);
    long long const size = write();
    SharedMem keep(m_Name, 0, false);
    keep.map();
    Server::unmapSharedMemory(false);
    tests::currentSubPool().clear();
    Point3D::create(2, 9, 9, 9);
    Point3D::create(3, 3, 3, 3);
    tests::currentSubPool().m_TextList = {"old"};
    Server::readSharedMem(m_Name, size);
    EXPECT_EQ(Server::exchangeFailure(), "");
    // The id 2 is taken, so the point that stood there stays.
    EXPECT_EQ(tests::points(),
              (std::map<int, tests::Coordinates>{{1, {1, 1, 1}}, {2, {9, 9, 9}}, {3, {3, 3, 3}}}));
    EXPECT_EQ(tests::currentSubPool().m_TextList, (std::vector<std::string>{"old"}));
    keep.unmap();
}

TEST_F(ModelStream, AStringIsReadUpToAZeroByteAndTheReaderStaysInStep)
{
    ByteString stream;
    stream.zeros(EmptyBeforeTexts);
    stream.i32(2).i32(5).raw({'a', 'b', 0, 'c', 'd'}).text("next");
    stream.i32(0).zeros(EmptyLog);
    tests::ScopedSegment const segment(m_Name, stream.bytes());
    Server::readSharedMem(m_Name, static_cast<long long>(stream.bytes().size()));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(tests::currentSubPool().m_TextList, (std::vector<std::string>{"ab", "next"}));
}

TEST_F(ModelStream, NegativeCountsReadAsNone)
{
    ByteString stream;
    for (int i = 0; i < 27; ++i)
        stream.i32(-1 - i);
    tests::ScopedSegment const segment(m_Name, stream.bytes());
    Server::readSharedMem(m_Name, 108);
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(Pool::getInstance()->getSize(), 108);
}

TEST_F(ModelStream, TheFacesToSplitArriveInTheOrderOfTheStream)
{
    tests::currentSubPool().m_FacesToSplit = {7};
    ByteString stream;
    stream.zeros(EmptyBeforeTexts + 4).i32(2).i32(9).i32(4).zeros(EmptyLog);
    tests::ScopedSegment const segment(m_Name, stream.bytes());
    Server::readSharedMem(m_Name, static_cast<long long>(stream.bytes().size()));
    EXPECT_EQ(tests::currentSubPool().m_FacesToSplit, (std::vector<int>{7, 9, 4}));
}

TEST_F(ModelStream, ASizeOfZeroOpensNothingAndKeepsTheSegmentAtHand)
{
    Point3D::create(1, 0, 0, 0);
    write();
    Server::readSharedMem(m_Name, 0);
    Server::readSharedMem("", 136);
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(tests::segmentBytes(m_Name).size(), 136U);
    // The segment that was written is still the one at hand: releasing it frees its name.
    Server::unmapSharedMemory(false);
    EXPECT_TRUE(tests::segmentBytes(m_Name).empty());
}

TEST_F(ModelStream, TheWriterKeepsTheSegmentUntilItIsReleased)
{
    write();
    EXPECT_EQ(tests::segmentBytes(m_Name).size(), 108U);
    Server::unmapSharedMemory(false);
    EXPECT_TRUE(tests::segmentBytes(m_Name).empty());
}

TEST_F(ModelStream, TheReaderReleasesItsViewAtTheEnd)
{
    tests::ScopedSegment const segment(m_Name, Bytes(108, 0));
    Server::readSharedMem(m_Name, 108);
    // A second release has nothing left to do.
    Server::unmapSharedMemory(true);
    EXPECT_EQ(tests::segmentBytes(m_Name).size(), 108U);
}

} // namespace
} // namespace transl_tk
