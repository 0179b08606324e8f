#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/circle.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

tests::Owned<Circle> ofRadius(double radius)
{
    return tests::owned(
        Circle::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere, radius, {}));
}

TEST(Circle, ComputesItsThirdAxisAndNeverReadsTheFourthArray)
{
    tests::expectComputedThirdAxis(
        [](auto &... placement) { return Circle::create(placement..., 5, {}); });
}

TEST(Circle, KeepsItsRadiusWhateverItIs)
{
    for (double const radius : {5.0, 0.0, -3.0})
        EXPECT_EQ(ofRadius(radius)->getRadius(), radius);
    EXPECT_EQ(ofRadius(5)->getType(), Curve::Type::Circle);
}

TEST(Circle, ScalesLocationAndRadiusAndKeepsItsAxes)
{
    auto const circle = ofRadius(5);
    Curve::scale(circle.get(), 2, 1, 1, 1);
    EXPECT_EQ(circle->getRadius(), 10);
    EXPECT_EQ(tests::placementOf(*circle),
              (tests::Placement{{3, 5, 7}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST(Circle, TableHoldsRadiusThenPlacement)
{
    EXPECT_EQ(tests::slotOf(&Circle::getRadius), 6U);
    EXPECT_EQ(tests::slotOf(&Circle::getPlacement), 7U);
}

} // namespace
} // namespace geom
