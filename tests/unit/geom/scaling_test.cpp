#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/bspline_curve.h>
#include <keld-transl/geom/bspline_surface.h>
#include <keld-transl/geom/circle.h>
#include <keld-transl/geom/line.h>
#include <keld-transl/geom/plane.h>
#include <keld-transl/geom/point.h>
#include <keld-transl/geom/surface_of_revolution.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

using tests::Triple;

Triple scaledPoint(Triple const & at, double factor, Triple const & centre)
{
    auto const point = tests::owned(Point::create(at[0], at[1], at[2]));
    Point::scale(point.get(), factor, centre[0], centre[1], centre[2]);
    Triple scaled{};
    point->getCoordinates(scaled[0], scaled[1], scaled[2]);
    return scaled;
}

TEST(Scaling, MovesAPositionAwayFromTheCentre)
{
    EXPECT_EQ(scaledPoint({2, 3, 4}, 2, {1, 1, 1}), (Triple{3, 5, 7}));
}

TEST(Scaling, UsesEachComponentOfTheCentre)
{
    EXPECT_EQ(scaledPoint({10, 20, 30}, 3, {1, 2, 3}), (Triple{28, 56, 84}));
}

TEST(Scaling, TakesNegativeFactorsAndZero)
{
    EXPECT_EQ(scaledPoint({2, 3, 4}, -1, {1, 1, 1}), (Triple{0, -1, -2}));
    EXPECT_EQ(scaledPoint({2, 3, 4}, 0, {1, 5, 6}), (Triple{1, 5, 6}));
}

TEST(Scaling, ByOneMayChangeTheLastBit)
{
    EXPECT_EQ(scaledPoint({0.1, 0.1, 0.3}, 1, {0.7, 1e16, 1}),
              (Triple{0x1.9999999999998p-4, 0, 0x1.3333333333334p-2}));
}

// (3.2 + 1.7) * 2.6 - 1.7 ends in ...16 when each step rounds, in ...15 when the last two are fused
// or only the result rounds, and in ...14 when the sum is folded to 3.2 * 2.6 - (1.7 - 1.7 * 2.6).
using namespace tests::rounding;
constexpr double Positions[3] = {Position, Position, Position};
constexpr Triple AllScaled = {Scaled, Scaled, Scaled};

TEST(ScalingRoundsInThreeSteps, OfAPoint)
{
    EXPECT_EQ(scaledPoint(std::to_array(Positions), Factor, {Centre, Centre, Centre}), AllScaled);
}

TEST(ScalingRoundsInThreeSteps, OfALine)
{
    auto const line = tests::owned(Line::create(Positions, tests::AxisX, {}));
    Curve::scale(line.get(), Factor, Centre, Centre, Centre);
    EXPECT_EQ(tests::tripleOf(line, &Line::getPoint), AllScaled);
}

TEST(ScalingRoundsInThreeSteps, OfAPlacedCurve)
{
    auto const circle =
        tests::owned(Circle::create(Positions, tests::AxisX, tests::AxisY, tests::Nowhere, 1, {}));
    Curve::scale(circle.get(), Factor, Centre, Centre, Centre);
    EXPECT_EQ(tests::placementOf(*circle).location, AllScaled);
}

TEST(ScalingRoundsInThreeSteps, OfAPlacedSurface)
{
    auto const plane =
        tests::owned(Plane::create(Positions, tests::AxisX, tests::AxisY, tests::Nowhere, {}, {}));
    Surface::scale(plane.get(), Factor, Centre, Centre, Centre);
    EXPECT_EQ(tests::placementOf(*plane).location, AllScaled);
}

TEST(ScalingRoundsInThreeSteps, OfAnAxisPoint)
{
    auto const surface =
        tests::owned(SurfaceOfRevolution::create(Positions, tests::AxisX, nullptr, {}, {}));
    Surface::scale(surface.get(), Factor, Centre, Centre, Centre);
    EXPECT_EQ(tests::tripleOf(surface, &SurfaceOfRevolution::getAxisPoint),
              (Triple{Scaled, Scaled, Position}));
}

// Enough points for a loop that the compiler makes wide.
constexpr int Many = 67;

TEST(ScalingRoundsInThreeSteps, OfASplineCurve)
{
    std::vector<double> points(3 * Many, Position);
    auto const curve = tests::owned(BSplineCurve::create(1, false, false, 0, nullptr, nullptr, Many,
                                                         points.data(), nullptr, {}));
    Curve::scale(curve.get(), Factor, Centre, Centre, Centre);
    curve->getControlPoints(points.data());
    EXPECT_EQ(points, std::vector<double>(3 * Many, Scaled));
}

TEST(ScalingRoundsInThreeSteps, OfASplineSurface)
{
    std::vector<double> points(3 * Many, Position);
    auto const surface = tests::owned(BSplineSurface::create(
        1, false, false, 1, false, false, 0, nullptr, nullptr, 0, nullptr, nullptr, Many, 1,
        points.data(), nullptr, {}, {}, Surface::Type::BSpline));
    Surface::scale(surface.get(), Factor, Centre, Centre, Centre);
    surface->getControlPoints(points.data());
    EXPECT_EQ(points, std::vector<double>(3 * Many, Scaled));
}

/// A point of a class that the library does not know.
class ForeignPoint final : public Point
{
public:
    ~ForeignPoint() override = default;
    void getCoordinates(double & x, double &, double &) override { x = m_X; }
    double m_X = 5;
};

TEST(Scaling, PassesOverPointsThatAreNoneOfTheLibrarys)
{
    ForeignPoint point;
    Point::scale(&point, 2, 0, 0, 0);
    EXPECT_EQ(point.m_X, 5);
}

} // namespace
} // namespace geom
