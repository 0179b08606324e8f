#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/line.h>
#include <keld-transl/geom/surface_of_linear_extrusion.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

constexpr double Direction[3] = {0, 3, 5};

tests::Owned<SurfaceOfLinearExtrusion> along(Curve * curve)
{
    return tests::owned(SurfaceOfLinearExtrusion::create(curve, Direction, tests::parameters({8}),
                                                         tests::parameters({9})));
}

TEST(SurfaceOfLinearExtrusion, GivesBackWhatItWasMadeWith)
{
    Line * const line = Line::create(tests::At, tests::AxisX, {});
    auto const surface = along(line);
    EXPECT_EQ(surface->getType(), Surface::Type::LinearExtrusion);
    EXPECT_EQ(surface->getCurve(), line);
    EXPECT_EQ(tests::tripleOf(surface, &SurfaceOfLinearExtrusion::getDirection),
              (tests::Triple{0, 3, 5}));
    EXPECT_EQ(surface->getParameterizationU().m_Values, (std::vector<double>{8}));
    EXPECT_EQ(surface->getParameterizationV().m_Values, (std::vector<double>{9}));
}

TEST(SurfaceOfLinearExtrusion, OwnsItsCurve)
{
    tests::Ends ends;
    along(new tests::ForeignCurve(ends, "profile")).reset();
    EXPECT_EQ(ends, (tests::Ends{"profile"}));
}

TEST(SurfaceOfLinearExtrusion, MayHaveNoCurve)
{
    auto const surface = along(nullptr);
    EXPECT_EQ(surface->getCurve(), nullptr);
    Surface::scale(surface.get(), 2, 0, 0, 0);
}

TEST(SurfaceOfLinearExtrusion, ScalesItsCurveAndNotTheLengthOfItsDirection)
{
    Line * const line = Line::create(tests::At, tests::AxisX, {});
    auto const surface = along(line);
    Surface::scale(surface.get(), 2, 1, 1, 1);
    EXPECT_EQ(tests::tripleOf(surface, &SurfaceOfLinearExtrusion::getDirection),
              (tests::Triple{0, 3, 5}));
    double point[3];
    line->getPoint(point);
    EXPECT_EQ(std::to_array(point), (tests::Triple{3, 5, 7}));
}

TEST(SurfaceOfLinearExtrusion, TableHoldsCurveThenDirection)
{
    EXPECT_EQ(tests::slotOf(&SurfaceOfLinearExtrusion::getCurve), 5U);
    EXPECT_EQ(tests::slotOf(&SurfaceOfLinearExtrusion::getDirection), 6U);
}

} // namespace
} // namespace geom
