#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/circle.h>
#include <keld-transl/geom/line.h>
#include <keld-transl/geom/ruled_surface.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

tests::Owned<RuledSurface> between(Curve * first, Curve * second)
{
    return tests::owned(
        RuledSurface::create(first, second, tests::parameters({8}), tests::parameters({9})));
}

TEST(RuledSurface, GivesBackWhatItWasMadeWith)
{
    Line * const first = Line::create(tests::At, tests::AxisX, {});
    Line * const second = Line::create(tests::At, tests::AxisY, {});
    auto const surface = between(first, second);
    EXPECT_EQ(surface->getType(), Surface::Type::Ruled);
    EXPECT_EQ(surface->getFirstCurve(), first);
    EXPECT_EQ(surface->getSecondCurve(), second);
    EXPECT_EQ(surface->getParameterizationU().m_Values, (std::vector<double>{8}));
    EXPECT_EQ(surface->getParameterizationV().m_Values, (std::vector<double>{9}));
}

TEST(RuledSurface, OwnsBothCurvesAndFreesTheFirstOneFirst)
{
    tests::Ends ends;
    between(new tests::ForeignCurve(ends, "first"), new tests::ForeignCurve(ends, "second"))
        .reset();
    EXPECT_EQ(ends, (tests::Ends{"first", "second"}));
}

TEST(RuledSurface, MayHaveNoCurves)
{
    auto const surface = between(nullptr, nullptr);
    EXPECT_EQ(surface->getFirstCurve(), nullptr);
    EXPECT_EQ(surface->getSecondCurve(), nullptr);
    Surface::scale(surface.get(), 2, 0, 0, 0);
}

TEST(RuledSurface, ScalesBothCurves)
{
    Line * const line = Line::create(tests::At, tests::AxisX, {});
    Circle * const circle =
        Circle::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere, 5, {});
    auto const surface = between(line, circle);
    Surface::scale(surface.get(), 2, 1, 1, 1);
    double point[3];
    line->getPoint(point);
    EXPECT_EQ(std::to_array(point), (tests::Triple{3, 5, 7}));
    EXPECT_EQ(circle->getRadius(), 10);
}

TEST(RuledSurface, TableHoldsFirstThenSecond)
{
    EXPECT_EQ(tests::slotOf(&RuledSurface::getFirstCurve), 5U);
    EXPECT_EQ(tests::slotOf(&RuledSurface::getSecondCurve), 6U);
}

} // namespace
} // namespace geom
