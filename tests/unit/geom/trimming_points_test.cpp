#include "support/shapes.h"

#include <keld-transl/geom/trimming_points.h>

#include <gtest/gtest.h>
#include <memory>
#include <type_traits>

namespace geom {
namespace {

constexpr std::uint64_t Unset = 0x7FEFFFFFFFFFFFFF;

/// The first `count` components of a point, as bits.
std::vector<std::uint64_t> components(double const * point, int count)
{
    return tests::bitsOf(std::vector<double>(point, point + count));
}

std::vector<double> values(double const * point, int count)
{
    return {point, point + count};
}

TEST(TrimmingPoints, AreUnsetAndOfTrueSenseAtFirst)
{
    for (int const count : {3, 4}) {
        trimmingPoints const points(count == 4);
        std::vector<std::uint64_t> const unset(static_cast<std::size_t>(count), Unset);
        EXPECT_EQ(components(points.getStartPoint(), count), unset);
        EXPECT_EQ(components(points.getEndPoint(), count), unset);
        EXPECT_TRUE(points.getSense());
    }
}

TEST(TrimmingPoints, KeepTheSense)
{
    trimmingPoints points(false);
    points.setSense(false);
    EXPECT_FALSE(points.getSense());
}

TEST(TrimmingPoints, CopyThreeOrFourComponents)
{
    trimmingPoints points(true);
    double start[] = {1, 2, 3, 4};
    double end[] = {5, 6, 7, 8};
    points.setStartPoint(start, false);
    points.setEndPoint(end, false);
    EXPECT_EQ(values(points.getStartPoint(), 3), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(values(points.getEndPoint(), 3), (std::vector<double>{5, 6, 7}));
    EXPECT_EQ(components(points.getStartPoint() + 3, 1)[0], Unset);
    EXPECT_EQ(components(points.getEndPoint() + 3, 1)[0], Unset);
    points.setStartPoint(start, true);
    points.setEndPoint(end, true);
    EXPECT_EQ(values(points.getStartPoint(), 4), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(values(points.getEndPoint(), 4), (std::vector<double>{5, 6, 7, 8}));
}

TEST(TrimmingPoints, SetOneComponent)
{
    trimmingPoints points(true);
    for (unsigned short position = 0; position < 4; ++position) {
        points.setStartPointInPos(position + 10, position, true);
        points.setEndPointInPos(position + 20, position, true);
    }
    EXPECT_EQ(values(points.getStartPoint(), 4), (std::vector<double>{10, 11, 12, 13}));
    EXPECT_EQ(values(points.getEndPoint(), 4), (std::vector<double>{20, 21, 22, 23}));
}

TEST(TrimmingPoints, IgnoreAPositionBehindTheLastComponent)
{
    trimmingPoints points(true);
    std::vector<std::uint64_t> const unset(4, Unset);
    points.setStartPointInPos(1, 3, false);
    points.setEndPointInPos(1, 3, false);
    points.setStartPointInPos(1, 4, true);
    points.setEndPointInPos(1, 4, true);
    points.setStartPointInPos(1, 65535, true);
    points.setEndPointInPos(1, 65535, true);
    EXPECT_EQ(components(points.getStartPoint(), 4), unset);
    EXPECT_EQ(components(points.getEndPoint(), 4), unset);
}

TEST(TrimmingPoints, StoreAFourthComponentWhoeverHasClaimedIt)
{
    trimmingPoints points(false);
    points.setStartPointInPos(1, 3, true);
    points.setEndPointInPos(2, 3, true);
    EXPECT_EQ(points.getStartPoint()[3], 1);
    EXPECT_EQ(points.getEndPoint()[3], 2);
}

TEST(TrimmingPoints, MayBeWrittenThroughTheirPointers)
{
    trimmingPoints const points(false);
    points.getStartPoint()[1] = 5;
    EXPECT_EQ(points.getStartPoint()[1], 5);
}

TEST(TrimmingPoints, AssignmentSharesTheArraysAndCopiesTheSense)
{
    trimmingPoints source(false);
    source.setSense(false);
    // Only one of the two may be destroyed: this one's memory is given back bare.
    alignas(trimmingPoints) std::byte memory[sizeof(trimmingPoints)];
    auto * const target = new (memory) trimmingPoints(false);
    std::unique_ptr<double[]> const oldStart(target->getStartPoint());
    std::unique_ptr<double[]> const oldEnd(target->getEndPoint());
    *target = source;
    EXPECT_EQ(target->getStartPoint(), source.getStartPoint());
    EXPECT_EQ(target->getEndPoint(), source.getEndPoint());
    EXPECT_FALSE(target->getSense());
    EXPECT_EQ(components(oldStart.get(), 3), (std::vector<std::uint64_t>(3, Unset)));
}

TEST(TrimmingPoints, CannotBeCopiedIntoANewObject)
{
    EXPECT_FALSE(std::is_copy_constructible_v<trimmingPoints>);
    EXPECT_FALSE(std::is_move_constructible_v<trimmingPoints>);
    EXPECT_TRUE(std::is_copy_assignable_v<trimmingPoints>);
}

} // namespace
} // namespace geom
