#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/line_strip.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

using Values = std::vector<double>;

tests::Owned<LineStrip> threePoints()
{
    auto strip = tests::owned(LineStrip::create({}));
    strip->addPoint(1, 2, 3);
    strip->addPoint(4, 5, 6);
    strip->addPoint(7, 8, 9);
    return strip;
}

Values pointsOf(LineStrip & strip)
{
    Values points(3 * static_cast<std::size_t>(strip.getNumPoints()));
    strip.getPoints(points.data());
    return points;
}

TEST(LineStrip, HasNoPointsAtFirst)
{
    auto const strip = tests::owned(LineStrip::create(tests::parameters({8, 9})));
    EXPECT_EQ(strip->getType(), Curve::Type::LineStrip);
    EXPECT_EQ(strip->getNumPoints(), 0);
    EXPECT_EQ(strip->getParameterization().m_Values, (Values{8, 9}));
    strip->getPoints(nullptr);
}

TEST(LineStrip, KeepsItsPointsInOrderBitForBit)
{
    auto const strip = threePoints();
    strip->addPoint(tests::NegativeZero, tests::OddNan, 12);
    EXPECT_EQ(strip->getNumPoints(), 4);
    EXPECT_EQ(
        tests::bitsOf(pointsOf(*strip)),
        tests::bitsOf(Values{1, 2, 3, 4, 5, 6, 7, 8, 9, tests::NegativeZero, tests::OddNan, 12}));
}

TEST(LineStrip, WalkGoesToTheEndWhateverTheCallbackReturns)
{
    Values seen;
    EXPECT_TRUE(threePoints()->forEachPoint(
        [](int & index, double & x, double & y, double & z, void * user) {
            auto & values = *static_cast<Values *>(user);
            values.insert(values.end(), {static_cast<double>(index), x, y, z});
            return false;
        },
        &seen));
    EXPECT_EQ(seen, (Values{0, 1, 2, 3, 1, 4, 5, 6, 2, 7, 8, 9}));
}

TEST(LineStrip, WalkMovesPointsThroughItsReferences)
{
    auto const strip = threePoints();
    strip->forEachPoint(
        [](int & index, double & x, double & y, double & z, void *) {
            x += 10;
            y += 20;
            z += 100 * index;
            return true;
        },
        nullptr);
    EXPECT_EQ(pointsOf(*strip), (Values{11, 22, 3, 14, 25, 106, 17, 28, 209}));
}

TEST(LineStrip, ChangingTheIndexDoesNotSteerTheWalk)
{
    std::vector<int> seen;
    threePoints()->forEachPoint(
        [](int & index, double &, double &, double &, void * user) {
            static_cast<std::vector<int> *>(user)->push_back(index);
            index = 100;
            return true;
        },
        &seen);
    EXPECT_EQ(seen, (std::vector<int>{0, 1, 2}));
}

TEST(LineStrip, DoesNotScale)
{
    auto const strip = threePoints();
    Curve::scale(strip.get(), 2, 1, 1, 1);
    EXPECT_EQ(pointsOf(*strip), (Values{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(LineStrip, TableHoldsItsOperationsInOrder)
{
    EXPECT_EQ(tests::slotOf(&LineStrip::addPoint), 6U);
    EXPECT_EQ(tests::slotOf(&LineStrip::getNumPoints), 7U);
    EXPECT_EQ(tests::slotOf(&LineStrip::getPoints), 8U);
    EXPECT_EQ(tests::slotOf(&LineStrip::forEachPoint), 9U);
}

} // namespace
} // namespace geom
