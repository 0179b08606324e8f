#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/torus.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

tests::Owned<Torus> make()
{
    return tests::owned(Torus::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere, 5, 6,
                                      tests::parameters({8}), tests::parameters({9})));
}

TEST(Torus, ComputesItsThirdAxisAndNeverReadsTheFourthArray)
{
    tests::expectComputedThirdAxis(
        [](auto &... placement) { return Torus::create(placement..., 5, 6, {}, {}); });
}

TEST(Torus, GivesBackWhatItWasMadeWith)
{
    auto const torus = make();
    EXPECT_EQ(torus->getType(), Surface::Type::Torus);
    EXPECT_EQ(torus->getFirstRadius(), 5);
    EXPECT_EQ(torus->getSecondRadius(), 6);
    EXPECT_EQ(torus->getParameterizationU().m_Values, (std::vector<double>{8}));
    EXPECT_EQ(torus->getParameterizationV().m_Values, (std::vector<double>{9}));
}

TEST(Torus, MayHaveItsFirstRadiusBelowItsSecond)
{
    auto const torus = tests::owned(
        Torus::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere, 1, 4, {}, {}));
    EXPECT_EQ(torus->getFirstRadius(), 1);
    EXPECT_EQ(torus->getSecondRadius(), 4);
}

TEST(Torus, ScalesLocationAndBothRadii)
{
    auto const torus = make();
    Surface::scale(torus.get(), 2, 1, 1, 1);
    EXPECT_EQ(torus->getFirstRadius(), 10);
    EXPECT_EQ(torus->getSecondRadius(), 12);
    EXPECT_EQ(tests::placementOf(*torus),
              (tests::Placement{{3, 5, 7}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST(Torus, TableHoldsBothRadiiThenPlacement)
{
    EXPECT_EQ(tests::slotOf(&Torus::getFirstRadius), 5U);
    EXPECT_EQ(tests::slotOf(&Torus::getSecondRadius), 6U);
    EXPECT_EQ(tests::slotOf(&Torus::getPlacement), 7U);
}

} // namespace
} // namespace geom
