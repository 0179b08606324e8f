#include "support/models.h"
#include "support/slots.h"

#include <keld-transl/geom/point.h>
#include <keld-transl/model/point3d.h>

#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

namespace transl_tk {
namespace {

class Point3DTest : public testing::Test
{
protected:
    tests::ScopedPool m_Pool;
};

Point3D * make(int id)
{
    return Point3D::create(id, 1, 2, 3);
}

TEST_F(Point3DTest, FirstIdInAnEmptyStoreIsOne)
{
    EXPECT_EQ(make(0)->getId(), 1);
}

TEST_F(Point3DTest, IdZeroTakesTheLargestPlusOneAlsoBesideGaps)
{
    make(3);
    make(9);
    EXPECT_EQ(make(0)->getId(), 10);
}

TEST_F(Point3DTest, FreedIdIsUsedAgainOnlyWhenItWasTheLargest)
{
    Point3D * const first = make(0);
    make(0);
    Point3D * const third = make(0);
    Point3D::destruct(third);
    EXPECT_EQ(make(0)->getId(), 3);
    Point3D::destruct(first);
    EXPECT_EQ(make(0)->getId(), 4);
}

TEST_F(Point3DTest, IdZeroFollowsMinusOneAsZero)
{
    make(-1);
    Point3D * const zero = make(0);
    ASSERT_NE(zero, nullptr);
    EXPECT_EQ(zero->getId(), 0);
    EXPECT_EQ(tests::currentSubPool().m_Points.m_Entities.lookup(0), zero);
}

TEST_F(Point3DTest, TakenIdGivesNullAndChangesNothing)
{
    Point3D * const first = Point3D::create(5, 1, 2, 3);
    EXPECT_EQ(Point3D::create(5, 7, 8, 9), nullptr);
    EXPECT_EQ(tests::points(), (std::map<int, tests::Coordinates>{{5, {1, 2, 3}}}));
    EXPECT_EQ(tests::currentSubPool().m_Points.m_Entities.lookup(5), first);
}

TEST_F(Point3DTest, NoIdIsLeftAboveTheLargestNumber)
{
    make(std::numeric_limits<int>::max());
    EXPECT_EQ(make(0), nullptr);
    EXPECT_EQ(tests::points().size(), 1U);
}

TEST_F(Point3DTest, DestructOfNullDoesNothing)
{
    make(1);
    Point3D::destruct(nullptr);
    geom::Point::destruct(nullptr);
    EXPECT_EQ(tests::points().size(), 1U);
}

TEST_F(Point3DTest, DestructLeavesTheStore)
{
    Point3D::destruct(make(4));
    EXPECT_TRUE(tests::points().empty());
}

TEST_F(Point3DTest, LeavesTheSubPoolThatIsCurrentAtItsEnd)
{
    Pool & pool = *Pool::getInstance();
    Point3D * const inFirst = make(5);
    pool.newWorkingSubPool("second");
    Point3D * const inSecond = make(5);
    Point3D::destruct(inFirst);
    EXPECT_EQ(tests::currentSubPool().m_Points.m_Entities.lookup(5), nullptr);
    // It is still alive, and no store owns it any more.
    Point3D::destruct(inSecond);
    EXPECT_NE(make(5), nullptr);
}

TEST_F(Point3DTest, NoSubPoolListsADeadEntity)
{
    Pool & pool = *Pool::getInstance();
    Point3D * const inFirst = make(5);
    pool.newWorkingSubPool("second");
    Point3D::destruct(inFirst);
    pool.setCurrent("test");
    EXPECT_TRUE(tests::points().empty());
}

TEST_F(Point3DTest, KeepsCoordinatesBitForBit)
{
    double const nan = std::bit_cast<double>(std::uint64_t{0x7FF4000000000123});
    Point3D * const point =
        Point3D::create(0, nan, -0.0, std::numeric_limits<double>::denorm_min());
    auto const kept = tests::coordinatesOf(point);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(kept[0]), 0x7FF4000000000123U);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(kept[1]), 0x8000000000000000U);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(kept[2]), 1U);
}

TEST_F(Point3DTest, IsOfKindNine)
{
    EXPECT_EQ(make(1)->getEntityKind(), 9);
}

TEST_F(Point3DTest, TableHoldsKindThenCoordinates)
{
    EXPECT_EQ(tests::slotOf(&Point3D::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&Point3D::getCoordinates), 3U);
    EXPECT_EQ(tests::slotOf(&geom::Point::getCoordinates), 2U);
}

TEST(Point3DWithoutPool, IsNotMade)
{
    EXPECT_EQ(make(1), nullptr);
    EXPECT_FALSE(Pool::hasInstance());
}

TEST(GeomPoint, KeepsItsCoordinates)
{
    geom::Point * const point = geom::Point::create(1.5, -2.5, 3.5);
    double x = 0;
    double y = 0;
    double z = 0;
    point->getCoordinates(x, y, z);
    EXPECT_EQ(x, 1.5);
    EXPECT_EQ(y, -2.5);
    EXPECT_EQ(z, 3.5);
    geom::Point::destruct(point);
}

TEST(EntityPattern, ClassesAreAbstractAndFreedByDestructAlone)
{
    EXPECT_TRUE(std::is_abstract_v<Point3D>);
    EXPECT_FALSE(std::is_destructible_v<Point3D>);
    EXPECT_FALSE(std::is_destructible_v<geom::Point>);
    EXPECT_TRUE((std::is_base_of_v<Base, Point3D>));
}

} // namespace
} // namespace transl_tk
