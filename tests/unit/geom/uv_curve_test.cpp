#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/uv_curve.h>

#include <gtest/gtest.h>
#include <type_traits>

namespace geom {
namespace {

constexpr int Multiplicities[] = {3, 2, 1};
constexpr double Knots[] = {2, 3, 6};
constexpr double Points[] = {1, 2, 3, 4, 5, 6};
constexpr double Weights[] = {7, 8, 9};

tests::Owned<UVCurve> make(double const * weights = Weights)
{
    return tests::owned(
        UVCurve::create(4, false, true, 3, Multiplicities, Knots, 3, Points, weights));
}

using Points2 = std::array<double, 6>;
using Counts = std::array<int, 3>;
using tests::Triple;

struct Read
{
    explicit Read(UVCurve & curve)
    {
        curve.getKnots(knots.data(), multiplicities.data());
        curve.getControlPoints(points.data());
        curve.getWeights(weights.data());
    }
    Triple knots{};
    Counts multiplicities{};
    Points2 points{};
    Triple weights{};
};

TEST(GeomUVCurve, GivesBackAllThatItWasMadeWith)
{
    auto const curve = make();
    Read const read(*curve);
    EXPECT_EQ(read.knots, (Triple{2, 3, 6}));
    EXPECT_EQ(read.multiplicities, (Counts{3, 2, 1}));
    EXPECT_EQ(read.points, (Points2{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(read.weights, (Triple{7, 8, 9}));
    EXPECT_EQ(curve->getNumKnots(), 3);
    EXPECT_EQ(curve->getNumControlPoints(), 3);
    EXPECT_TRUE(curve->isRational());
    int degree = 0;
    bool flagA = true;
    bool flagB = false;
    curve->getSplineForm(degree, flagA, flagB);
    EXPECT_EQ(degree, 4);
    EXPECT_FALSE(flagA);
    EXPECT_TRUE(flagB);
}

TEST(GeomUVCurve, WithoutWeightsIsNotRationalAndFillsNone)
{
    auto const curve = make(nullptr);
    EXPECT_FALSE(curve->isRational());
    EXPECT_EQ(Read(*curve).weights, (Triple{}));
}

TEST(GeomUVCurve, ReversesKnotsWithTheirDifferenceAndPointsInPairs)
{
    auto const curve = make();
    curve->reverse();
    Read const read(*curve);
    EXPECT_EQ(read.knots, (Triple{-2, 1, 2}));
    EXPECT_EQ(read.multiplicities, (Counts{1, 2, 3}));
    EXPECT_EQ(read.points, (Points2{5, 6, 3, 4, 1, 2}));
    EXPECT_EQ(read.weights, (Triple{9, 8, 7}));
}

TEST(GeomUVCurve, DestructFreesTheTrimPointsThatWereSetLast)
{
    auto const first = std::make_unique<trimmingPoints>(true);
    UVCurve * const curve = make().release();
    EXPECT_EQ(curve->getTrimPoints(), nullptr);
    curve->setTrimPoints(first.get());
    auto * const second = new trimmingPoints(true);
    curve->setTrimPoints(second);
    EXPECT_EQ(curve->getTrimPoints(), second);
    UVCurve::destruct(curve);
    EXPECT_TRUE(first->getSense());
}

TEST(GeomUVCurve, DestructOfNullDoesNothing)
{
    UVCurve::destruct(nullptr);
}

TEST(GeomUVCurve, NegativeCountIsALengthError)
{
    tests::expectLengthError(
        [] { UVCurve::create(1, false, false, -1, nullptr, nullptr, 0, nullptr, nullptr); });
    tests::expectLengthError(
        [] { UVCurve::create(1, false, false, 3, Multiplicities, Knots, -1, nullptr, nullptr); });
}

TEST(GeomUVCurve, TableHoldsItsOperationsInOrder)
{
    EXPECT_EQ(tests::slotOf(&UVCurve::getSplineForm), 2U);
    EXPECT_EQ(tests::slotOf(&UVCurve::getNumControlPoints), 3U);
    EXPECT_EQ(tests::slotOf(&UVCurve::getControlPoints), 4U);
    EXPECT_EQ(tests::slotOf(&UVCurve::getWeights), 5U);
    EXPECT_EQ(tests::slotOf(&UVCurve::getNumKnots), 6U);
    EXPECT_EQ(tests::slotOf(&UVCurve::getKnots), 7U);
    EXPECT_EQ(tests::slotOf(&UVCurve::isRational), 8U);
    EXPECT_EQ(tests::slotOf(&UVCurve::reverse), 9U);
    EXPECT_EQ(tests::slotOf(&UVCurve::getTrimPoints), 10U);
    EXPECT_EQ(tests::slotOf(&UVCurve::setTrimPoints), 11U);
}

TEST(GeomUVCurve, IsNoCurveInSpaceAndFreedByDestructAlone)
{
    EXPECT_FALSE((std::is_base_of_v<Curve, UVCurve>));
    EXPECT_TRUE(std::is_abstract_v<UVCurve>);
    EXPECT_FALSE(std::is_destructible_v<UVCurve>);
}

} // namespace
} // namespace geom
