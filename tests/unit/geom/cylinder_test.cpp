#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/cylinder.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

tests::Owned<Cylinder> make()
{
    return tests::owned(Cylinder::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere, 5,
                                         tests::parameters({8}), tests::parameters({9})));
}

TEST(Cylinder, ComputesItsThirdAxisAndNeverReadsTheFourthArray)
{
    tests::expectComputedThirdAxis(
        [](auto &... placement) { return Cylinder::create(placement..., 5, {}, {}); });
}

TEST(Cylinder, GivesBackWhatItWasMadeWith)
{
    auto const cylinder = make();
    EXPECT_EQ(cylinder->getType(), Surface::Type::Cylinder);
    EXPECT_EQ(cylinder->getRadius(), 5);
    EXPECT_EQ(cylinder->getParameterizationU().m_Values, (std::vector<double>{8}));
    EXPECT_EQ(cylinder->getParameterizationV().m_Values, (std::vector<double>{9}));
}

TEST(Cylinder, ScalesLocationAndRadius)
{
    auto const cylinder = make();
    Surface::scale(cylinder.get(), 2, 1, 1, 1);
    EXPECT_EQ(cylinder->getRadius(), 10);
    EXPECT_EQ(tests::placementOf(*cylinder),
              (tests::Placement{{3, 5, 7}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST(Cylinder, TableHoldsRadiusThenPlacement)
{
    EXPECT_EQ(tests::slotOf(&Cylinder::getRadius), 5U);
    EXPECT_EQ(tests::slotOf(&Cylinder::getPlacement), 6U);
}

} // namespace
} // namespace geom
