#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/cone.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

tests::Owned<Cone> make()
{
    return tests::owned(Cone::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere, 5, 6,
                                     tests::parameters({8}), tests::parameters({9})));
}

TEST(Cone, ComputesItsThirdAxisAndNeverReadsTheFourthArray)
{
    tests::expectComputedThirdAxis(
        [](auto &... placement) { return Cone::create(placement..., 5, 6, {}, {}); });
}

TEST(Cone, GivesBackWhatItWasMadeWith)
{
    auto const cone = make();
    EXPECT_EQ(cone->getType(), Surface::Type::Cone);
    EXPECT_EQ(cone->getRadius(), 5);
    EXPECT_EQ(cone->getAngle(), 6);
    EXPECT_EQ(cone->getParameterizationU().m_Values, (std::vector<double>{8}));
    EXPECT_EQ(cone->getParameterizationV().m_Values, (std::vector<double>{9}));
}

TEST(Cone, ScalesLocationAndRadiusAndKeepsItsAngle)
{
    auto const cone = make();
    Surface::scale(cone.get(), 2, 1, 1, 1);
    EXPECT_EQ(cone->getRadius(), 10);
    EXPECT_EQ(cone->getAngle(), 6);
    EXPECT_EQ(tests::placementOf(*cone),
              (tests::Placement{{3, 5, 7}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST(Cone, TableHoldsRadiusThenAngleThenPlacement)
{
    EXPECT_EQ(tests::slotOf(&Cone::getRadius), 5U);
    EXPECT_EQ(tests::slotOf(&Cone::getAngle), 6U);
    EXPECT_EQ(tests::slotOf(&Cone::getPlacement), 7U);
}

} // namespace
} // namespace geom
