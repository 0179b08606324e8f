#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/plane.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

tests::Owned<Plane> make()
{
    return tests::owned(Plane::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere,
                                      tests::parameters({8}), tests::parameters({9})));
}

TEST(Plane, ComputesItsThirdAxisAndNeverReadsTheFourthArray)
{
    tests::expectComputedThirdAxis(
        [](auto &... placement) { return Plane::create(placement..., {}, {}); });
}

TEST(Plane, GivesBackWhatItWasMadeWith)
{
    auto const plane = make();
    EXPECT_EQ(plane->getType(), Surface::Type::Plane);
    EXPECT_EQ(plane->getParameterizationU().m_Values, (std::vector<double>{8}));
    EXPECT_EQ(plane->getParameterizationV().m_Values, (std::vector<double>{9}));
}

TEST(Plane, ScalesItsLocation)
{
    auto const plane = make();
    Surface::scale(plane.get(), 2, 1, 1, 1);
    EXPECT_EQ(tests::placementOf(*plane),
              (tests::Placement{{3, 5, 7}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST(Plane, TableHoldsThePlacement)
{
    EXPECT_EQ(tests::slotOf(&Plane::getPlacement), 5U);
}

} // namespace
} // namespace geom
