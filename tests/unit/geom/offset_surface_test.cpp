#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/offset_surface.h>
#include <keld-transl/geom/sphere.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

tests::Owned<OffsetSurface> from(Surface * base, double distance)
{
    return tests::owned(
        OffsetSurface::create(base, distance, tests::parameters({8}), tests::parameters({9})));
}

tests::Owned<Sphere> sphere()
{
    return tests::owned(
        Sphere::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere, 5, {}, {}));
}

TEST(OffsetSurface, GivesBackWhatItWasMadeWith)
{
    auto const base = sphere();
    auto const surface = from(base.get(), -1);
    EXPECT_EQ(surface->getType(), Surface::Type::Offset);
    EXPECT_EQ(surface->getBaseSurface(), base.get());
    EXPECT_EQ(surface->getDistance(), -1);
    EXPECT_EQ(surface->getParameterizationU().m_Values, (std::vector<double>{8}));
    EXPECT_EQ(surface->getParameterizationV().m_Values, (std::vector<double>{9}));
}

TEST(OffsetSurface, RefersToItsBaseAndOwnsNothing)
{
    tests::Ends ends;
    tests::ForeignSurface base(ends, "base");
    from(&base, 1).reset();
    EXPECT_TRUE(ends.empty());
}

TEST(OffsetSurface, ScalesItsDistanceAndItsBase)
{
    auto const base = sphere();
    auto const surface = from(base.get(), 1);
    Surface::scale(surface.get(), 3, 0, 0, 0);
    EXPECT_EQ(surface->getDistance(), 3);
    EXPECT_EQ(base->getRadius(), 15);
    EXPECT_EQ(tests::placementOf(*base).location, (tests::Triple{6, 9, 12}));
}

TEST(OffsetSurface, ScalesABaseTwiceThatTwoReferTo)
{
    auto const base = sphere();
    Surface::scale(from(base.get(), 1).get(), 3, 0, 0, 0);
    Surface::scale(from(base.get(), 1).get(), 3, 0, 0, 0);
    EXPECT_EQ(base->getRadius(), 45);
}

TEST(OffsetSurface, MayHaveNoBase)
{
    auto const surface = from(nullptr, 1);
    Surface::scale(surface.get(), 3, 0, 0, 0);
    EXPECT_EQ(surface->getBaseSurface(), nullptr);
    EXPECT_EQ(surface->getDistance(), 3);
}

TEST(OffsetSurface, ScalesAndEndsHoweverDeepItNests)
{
    auto const base = sphere();
    std::vector<tests::Owned<OffsetSurface>> chain;
    chain.push_back(from(base.get(), 1));
    while (chain.size() < 100'000)
        chain.push_back(from(chain.back().get(), 1));
    Surface::scale(chain.back().get(), 3, 0, 0, 0);
    EXPECT_EQ(chain.back()->getDistance(), 3);
    EXPECT_EQ(chain.front()->getDistance(), 3);
    EXPECT_EQ(base->getRadius(), 15);
}

TEST(OffsetSurface, TableHoldsBaseThenDistance)
{
    EXPECT_EQ(tests::slotOf(&OffsetSurface::getBaseSurface), 5U);
    EXPECT_EQ(tests::slotOf(&OffsetSurface::getDistance), 6U);
}

} // namespace
} // namespace geom
