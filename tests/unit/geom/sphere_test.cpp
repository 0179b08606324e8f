#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/sphere.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

tests::Owned<Sphere> make()
{
    return tests::owned(Sphere::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere, 5,
                                       tests::parameters({8}), tests::parameters({9})));
}

TEST(Sphere, ComputesItsThirdAxisAndNeverReadsTheFourthArray)
{
    tests::expectComputedThirdAxis(
        [](auto &... placement) { return Sphere::create(placement..., 5, {}, {}); });
}

TEST(Sphere, GivesBackWhatItWasMadeWith)
{
    auto const sphere = make();
    EXPECT_EQ(sphere->getType(), Surface::Type::Sphere);
    EXPECT_EQ(sphere->getRadius(), 5);
    EXPECT_EQ(sphere->getParameterizationU().m_Values, (std::vector<double>{8}));
    EXPECT_EQ(sphere->getParameterizationV().m_Values, (std::vector<double>{9}));
}

TEST(Sphere, ScalesLocationAndRadius)
{
    auto const sphere = make();
    Surface::scale(sphere.get(), 2, 1, 1, 1);
    EXPECT_EQ(sphere->getRadius(), 10);
    EXPECT_EQ(tests::placementOf(*sphere),
              (tests::Placement{{3, 5, 7}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST(Sphere, TableHoldsRadiusThenPlacement)
{
    EXPECT_EQ(tests::slotOf(&Sphere::getRadius), 5U);
    EXPECT_EQ(tests::slotOf(&Sphere::getPlacement), 6U);
}

} // namespace
} // namespace geom
