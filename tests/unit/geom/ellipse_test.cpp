#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/ellipse.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

tests::Owned<Ellipse> ofRadii(double first, double second)
{
    return tests::owned(
        Ellipse::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere, first, second, {}));
}

TEST(Ellipse, ComputesItsThirdAxisAndNeverReadsTheFourthArray)
{
    tests::expectComputedThirdAxis(
        [](auto &... placement) { return Ellipse::create(placement..., 5, 6, {}); });
}

TEST(Ellipse, KeepsItsRadii)
{
    auto const ellipse = ofRadii(5, 6);
    EXPECT_EQ(ellipse->getFirstRadius(), 5);
    EXPECT_EQ(ellipse->getSecondRadius(), 6);
    EXPECT_EQ(ellipse->getType(), Curve::Type::Ellipse);
}

TEST(Ellipse, ScalesLocationAndBothRadiiAndKeepsItsAxes)
{
    auto const ellipse = ofRadii(5, 6);
    Curve::scale(ellipse.get(), 2, 1, 1, 1);
    EXPECT_EQ(ellipse->getFirstRadius(), 10);
    EXPECT_EQ(ellipse->getSecondRadius(), 12);
    EXPECT_EQ(tests::placementOf(*ellipse),
              (tests::Placement{{3, 5, 7}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST(Ellipse, TableHoldsPlacementThenRadii)
{
    EXPECT_EQ(tests::slotOf(&Ellipse::getPlacement), 6U);
    EXPECT_EQ(tests::slotOf(&Ellipse::getFirstRadius), 7U);
    EXPECT_EQ(tests::slotOf(&Ellipse::getSecondRadius), 8U);
}

} // namespace
} // namespace geom
