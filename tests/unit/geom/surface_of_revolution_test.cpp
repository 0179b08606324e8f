#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/line.h>
#include <keld-transl/geom/surface_of_revolution.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

constexpr double Direction[3] = {0, 0, 3};

tests::Owned<SurfaceOfRevolution> around(Curve * curve)
{
    return tests::owned(SurfaceOfRevolution::create(
        tests::At, Direction, curve, tests::parameters({8}), tests::parameters({9})));
}

TEST(SurfaceOfRevolution, GivesBackWhatItWasMadeWith)
{
    Line * const line = Line::create(tests::At, tests::AxisX, {});
    auto const surface = around(line);
    EXPECT_EQ(surface->getType(), Surface::Type::Revolution);
    EXPECT_EQ(surface->getCurve(), line);
    EXPECT_EQ(tests::tripleOf(surface, &SurfaceOfRevolution::getAxisPoint),
              (tests::Triple{2, 3, 4}));
    EXPECT_EQ(tests::tripleOf(surface, &SurfaceOfRevolution::getAxisDirection),
              (tests::Triple{0, 0, 3}));
    EXPECT_EQ(surface->getParameterizationU().m_Values, (std::vector<double>{8}));
    EXPECT_EQ(surface->getParameterizationV().m_Values, (std::vector<double>{9}));
}

TEST(SurfaceOfRevolution, OwnsItsCurve)
{
    tests::Ends ends;
    around(new tests::ForeignCurve(ends, "meridian")).reset();
    EXPECT_EQ(ends, (tests::Ends{"meridian"}));
}

TEST(SurfaceOfRevolution, FreesItsCurvesTrimPoints)
{
    Line * const line = Line::create(tests::At, tests::AxisX, {});
    line->setTrimPoints(new trimmingPoints(false));
    around(line).reset();
}

TEST(SurfaceOfRevolution, MayHaveNoCurve)
{
    auto const surface = around(nullptr);
    EXPECT_EQ(surface->getCurve(), nullptr);
    Surface::scale(surface.get(), 2, 0, 0, 0);
}

TEST(SurfaceOfRevolution, AxisPointScalesInXAndYOnlyAndTheCurveInAllThree)
{
    Line * const line = Line::create(tests::At, tests::AxisX, {});
    auto const surface = around(line);
    Surface::scale(surface.get(), 2, 0, 0, 0);
    EXPECT_EQ(tests::tripleOf(surface, &SurfaceOfRevolution::getAxisPoint),
              (tests::Triple{4, 6, 4}));
    EXPECT_EQ(tests::tripleOf(surface, &SurfaceOfRevolution::getAxisDirection),
              (tests::Triple{0, 0, 3}));
    double point[3];
    line->getPoint(point);
    EXPECT_EQ(std::to_array(point), (tests::Triple{4, 6, 8}));
}

TEST(SurfaceOfRevolution, AxisPointKeepsItsZWhateverTheCentreIs)
{
    auto const surface = around(nullptr);
    Surface::scale(surface.get(), 2, 1, 1, 100);
    EXPECT_EQ(tests::tripleOf(surface, &SurfaceOfRevolution::getAxisPoint),
              (tests::Triple{3, 5, 4}));
}

TEST(SurfaceOfRevolution, TableHoldsCurvePointAndDirection)
{
    EXPECT_EQ(tests::slotOf(&SurfaceOfRevolution::getCurve), 5U);
    EXPECT_EQ(tests::slotOf(&SurfaceOfRevolution::getAxisPoint), 6U);
    EXPECT_EQ(tests::slotOf(&SurfaceOfRevolution::getAxisDirection), 7U);
}

} // namespace
} // namespace geom
