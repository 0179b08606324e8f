#include "support/leftovers.h"
#include "support/segments.h"

#include <keld-transl/exchange/shared_mem.h>

#include <cstring>
#include <gtest/gtest.h>
#include <type_traits>

namespace transl_tk {
namespace {

class SharedMemTest : public testing::Test
{
protected:
    /// Whether the segment can be found, as another process would look for it.
    bool exists() const { return !tests::segmentBytes(m_Name).empty(); }

    tests::LeftoverGuard m_Guard;
    std::string m_Name = tests::segmentName();
    SharedMem m_Segment{m_Name, 64, true};
};

TEST_F(SharedMemTest, IsUnmappedAtFirst)
{
    EXPECT_EQ(m_Segment.m_Name, m_Name);
    EXPECT_EQ(m_Segment.m_MapCount, 0);
    EXPECT_EQ(m_Segment.m_Base, nullptr);
    EXPECT_EQ(m_Segment.m_Index, 0U);
    EXPECT_TRUE(m_Segment.m_Create);
    EXPECT_EQ(m_Segment.m_Size, 64);
    EXPECT_FALSE(std::is_default_constructible_v<SharedMem>);
}

TEST_F(SharedMemTest, BytesOfTheCreatorAreSeenByTheOpener)
{
    m_Segment.map();
    ASSERT_NE(m_Segment.m_Base, nullptr);
    std::memcpy(m_Segment.m_Base, "seen", 4);
    SharedMem opener(m_Name, 0, false);
    opener.map();
    ASSERT_NE(opener.m_Base, nullptr);
    EXPECT_EQ(std::memcmp(opener.m_Base, "seen", 4), 0);
    EXPECT_EQ(FileMappingSize(opener.m_Handle), 64);
    opener.unmap();
    m_Segment.unmap();
}

TEST_F(SharedMemTest, MapNestsAndTheLastUnmapReleases)
{
    m_Segment.map();
    void * const base = m_Segment.m_Base;
    m_Segment.map();
    EXPECT_EQ(m_Segment.m_MapCount, 2);
    EXPECT_EQ(m_Segment.m_Base, base);
    m_Segment.unmap();
    EXPECT_EQ(m_Segment.m_MapCount, 1);
    EXPECT_TRUE(exists());
    m_Segment.unmap();
    EXPECT_EQ(m_Segment.m_MapCount, 0);
    EXPECT_FALSE(exists());
    EXPECT_EQ(m_Segment.m_Base, base);
    EXPECT_NE(m_Segment.m_Handle, nullptr);
}

TEST_F(SharedMemTest, UnmapWithoutMapCountsToMinusOneAndTheNextMapGoesToThePlatform)
{
    m_Segment.unmap();
    EXPECT_EQ(m_Segment.m_MapCount, -1);
    m_Segment.map();
    EXPECT_EQ(m_Segment.m_MapCount, 0);
    EXPECT_TRUE(exists());
    SharedMem first(m_Segment);
    // The count is not above 0 yet, so that this one goes there too and finds the name taken.
    m_Segment.map();
    EXPECT_EQ(m_Segment.m_MapCount, 1);
    EXPECT_NE(m_Segment.m_Handle, first.m_Handle);
    EXPECT_EQ(m_Segment.m_Base, nullptr);
    m_Segment.unmap();
    // The first mapping is out of this object's sight; the copy still holds it.
    EXPECT_TRUE(exists());
    first.m_MapCount = 1;
    first.unmap();
}

TEST_F(SharedMemTest, ForceUnmapReleasesAtOnce)
{
    m_Segment.map();
    m_Segment.map();
    m_Segment.forceUnmap();
    EXPECT_EQ(m_Segment.m_MapCount, 0);
    EXPECT_FALSE(exists());
    m_Segment.unmap();
    EXPECT_EQ(m_Segment.m_MapCount, -1);
    m_Segment.forceUnmap();
    EXPECT_EQ(m_Segment.m_MapCount, -1);
}

TEST_F(SharedMemTest, ATakenNameLeavesNoViewAndKeepsTheHandle)
{
    m_Segment.map();
    SharedMem second(m_Name, 64, true);
    second.map();
    EXPECT_EQ(second.m_MapCount, 1);
    EXPECT_EQ(second.m_Base, nullptr);
    EXPECT_NE(second.m_Handle, nullptr);
    second.unmap();
    EXPECT_TRUE(exists());
    m_Segment.unmap();
}

TEST_F(SharedMemTest, AMissingNameLeavesNoViewAndCounts)
{
    SharedMem opener(m_Name, 64, false);
    opener.map();
    EXPECT_EQ(opener.m_MapCount, 1);
    EXPECT_EQ(opener.m_Base, nullptr);
    EXPECT_EQ(opener.m_Handle, nullptr);
    opener.unmap();
    EXPECT_EQ(opener.m_MapCount, 0);
}

TEST_F(SharedMemTest, FourGibibytesAndMoreCannotBeCreated)
{
    SharedMem exact(m_Name, 1LL << 32, true);
    exact.map();
    EXPECT_EQ(exact.m_Handle, nullptr);
    EXPECT_EQ(exact.m_Base, nullptr);
    EXPECT_EQ(exact.m_MapCount, 1);
    exact.unmap();
    // Only the low half of the size reaches the block, so that the view does not fit into it.
    SharedMem more(m_Name, (1LL << 32) + 64, true);
    more.map();
    EXPECT_NE(more.m_Handle, nullptr);
    EXPECT_EQ(more.m_Base, nullptr);
    EXPECT_FALSE(exists());
    more.unmap();
}

TEST_F(SharedMemTest, TheDestructorReleasesNothing)
{
    void * handle = nullptr;
    void * base = nullptr;
    {
        SharedMem segment(m_Name, 64, true);
        segment.map();
        handle = segment.m_Handle;
        base = segment.m_Base;
    }
    EXPECT_TRUE(exists());
    static_cast<char *>(base)[63] = 1;
    EXPECT_NE(UnmapViewOfFile(base), 0);
    EXPECT_NE(CloseHandle(handle), 0);
}

TEST_F(SharedMemTest, AnyCopyReleasesTheSharedMappingAndTheOtherThenDoesNothing)
{
    m_Segment.map();
    SharedMem copy(m_Segment);
    EXPECT_EQ(copy.m_Base, m_Segment.m_Base);
    EXPECT_EQ(copy.m_Handle, m_Segment.m_Handle);
    copy.unmap();
    EXPECT_FALSE(exists());
    // A newer view may take the old one's address; the stale copy must leave it alone.
    SharedMem newer(m_Name, 64, true);
    newer.map();
    m_Segment.unmap();
    EXPECT_TRUE(exists());
    static_cast<char *>(newer.m_Base)[0] = 1;
    newer.unmap();
}

TEST_F(SharedMemTest, ResetPutsTheCursorToTheStart)
{
    m_Segment.m_Index = 17;
    EXPECT_EQ(&m_Segment.Index(), &m_Segment.m_Index);
    m_Segment.reset();
    EXPECT_EQ(m_Segment.Index(), 0U);
}

TEST_F(SharedMemTest, AnyTextServesAsAName)
{
    for (std::string const & name :
         {std::string("with/slash"), std::string("."), std::string(".."), std::string("%41"),
          std::string("a b\tc\n"), std::string("\xC3\xA4\xFF"), std::string(400, 'n'),
          std::string(400, 'n') + "!"}) {
        SharedMem creator(m_Name + name, 8, true);
        creator.map();
        ASSERT_NE(creator.m_Base, nullptr) << name;
        std::memcpy(creator.m_Base, &creator, 8);
        EXPECT_EQ(tests::segmentBytes(m_Name + name).size(), 8U) << name;
        creator.unmap();
    }
}

} // namespace
} // namespace transl_tk
