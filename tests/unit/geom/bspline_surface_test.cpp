#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/bspline_surface.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

using Values = std::vector<double>;
using Counts = std::vector<int>;

constexpr int MultiplicitiesU[] = {4, 5};
constexpr int MultiplicitiesV[] = {6, 7, 8};
constexpr double KnotsU[] = {0.25, tests::NegativeZero};
constexpr double KnotsV[] = {1.5, 2.5, 3.5};
constexpr double Points[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,
                             10, 11, 12, 13, 14, 15, 16, 17, tests::NegativeZero};
constexpr double Weights[] = {21, 22, 23, 24, 25, 26};

/// Three by two points.
tests::Owned<BSplineSurface> make(double const * weights = Weights,
                                  Surface::Type form = Surface::Type::BSpline)
{
    return tests::owned(BSplineSurface::create(
        2, true, false, 3, false, true, 2, MultiplicitiesU, KnotsU, 3, MultiplicitiesV, KnotsV, 3,
        2, Points, weights, tests::parameters({8}), tests::parameters({9}), form));
}

BSplineSurface * withCounts(int knotsU, int knotsV, int pointsU, int pointsV)
{
    return BSplineSurface::create(2, true, false, 3, false, true, knotsU, MultiplicitiesU, KnotsU,
                                  knotsV, MultiplicitiesV, KnotsV, pointsU, pointsV, Points,
                                  Weights, {}, {}, Surface::Type::BSpline);
}

template <class Container> Container head(Container const & values, std::size_t count)
{
    return Container(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(count));
}

TEST(BSplineSurface, GivesBackItsCounts)
{
    auto const surface = make();
    EXPECT_EQ(surface->getType(), Surface::Type::BSpline);
    EXPECT_EQ(surface->getNumControlPointsU(), 3);
    EXPECT_EQ(surface->getNumControlPointsV(), 2);
    EXPECT_EQ(surface->getNumKnotsU(), 2);
    EXPECT_EQ(surface->getNumKnotsV(), 3);
    EXPECT_EQ(surface->getParameterizationU().m_Values, (Values{8}));
    EXPECT_EQ(surface->getParameterizationV().m_Values, (Values{9}));
}

TEST(BSplineSurface, KeepsTheFormsOfItsDirectionsApart)
{
    auto const surface = make();
    int degree = 0;
    bool flagA = false;
    bool flagB = true;
    surface->getSplineFormU(degree, flagA, flagB);
    EXPECT_EQ(degree, 2);
    EXPECT_TRUE(flagA);
    EXPECT_FALSE(flagB);
    surface->getSplineFormV(degree, flagA, flagB);
    EXPECT_EQ(degree, 3);
    EXPECT_FALSE(flagA);
    EXPECT_TRUE(flagB);
}

TEST(BSplineSurface, FillsItsArraysBitForBitAndNoFurther)
{
    auto const surface = make();
    Values knots(4, -777);
    Counts multiplicities(4, -777);
    surface->getKnotsU(knots.data(), multiplicities.data());
    EXPECT_EQ(tests::bitsOf(knots), tests::bitsOf(Values{0.25, tests::NegativeZero, -777, -777}));
    EXPECT_EQ(multiplicities, (Counts{4, 5, -777, -777}));
    surface->getKnotsV(knots.data(), multiplicities.data());
    EXPECT_EQ(knots, (Values{1.5, 2.5, 3.5, -777}));
    EXPECT_EQ(multiplicities, (Counts{6, 7, 8, -777}));

    Values points(19, -777);
    surface->getControlPoints(points.data());
    EXPECT_EQ(tests::bitsOf(head(points, 18)), tests::bitsOf(Points));
    EXPECT_EQ(points.back(), -777);

    Values weights(7, -777);
    surface->getWeights(weights.data());
    EXPECT_EQ(weights, (Values{21, 22, 23, 24, 25, 26, -777}));
    EXPECT_TRUE(surface->isRational());
}

TEST(BSplineSurface, WithoutWeightsIsNotRationalAndFillsNone)
{
    auto const surface = make(nullptr);
    EXPECT_FALSE(surface->isRational());
    Values weights(6, -777);
    surface->getWeights(weights.data());
    EXPECT_EQ(weights, Values(6, -777));
}

TEST(BSplineSurface, StandsForAnotherShapeAndStaysASpline)
{
    EXPECT_EQ(make()->getSurfaceForm(), 2);
    auto const surface = make(Weights, Surface::Type::Plane);
    EXPECT_EQ(surface->getType(), 2);
    EXPECT_EQ(surface->getSurfaceForm(), 12);
    EXPECT_EQ(make(Weights, static_cast<Surface::Type>(-5))->getSurfaceForm(), -5);
}

TEST(BSplineSurface, MayHaveNoPointsAndKnots)
{
    auto const surface = tests::owned(withCounts(0, 0, 0, 7));
    EXPECT_EQ(surface->getNumControlPointsU(), 0);
    EXPECT_EQ(surface->getNumControlPointsV(), 7);
    EXPECT_EQ(surface->getNumKnotsU(), 0);
    EXPECT_FALSE(surface->isRational());
    surface->getControlPoints(nullptr);
    surface->getWeights(nullptr);
    surface->getKnotsU(nullptr, nullptr);
    surface->getKnotsV(nullptr, nullptr);
}

TEST(BSplineSurface, NegativeKnotCountIsALengthError)
{
    tests::expectLengthError([] { withCounts(-1, 3, 3, 2); });
    tests::expectLengthError([] { withCounts(2, -1, 3, 2); });
}

TEST(BSplineSurface, NegativeProductOfThePointCountsIsALengthError)
{
    tests::expectLengthError([] { withCounts(2, 3, -3, 2); });
    tests::expectLengthError([] { withCounts(2, 3, 3, -2); });
}

TEST(BSplineSurface, ProductOfThePointCountsIsTakenInSixtyFourBits)
{
    // In 32 bits these products would be 1, -2147483648 and 0.
    tests::expectLengthError([] { withCounts(2, 3, 2147483647, 2147483647); });
    tests::expectLengthError([] { withCounts(2, 3, -2147483647 - 1, 2147483647); });
    tests::expectLengthError([] { withCounts(2, 3, -2147483647 - 1, 2); });
}

TEST(BSplineSurface, MorePointsThanAnArrayCanHoldAreALengthError)
{
    // 24 bytes each: more than a pointer difference can tell, less than a size can.
    tests::expectLengthError([] { withCounts(2, 3, 800'000'000, 600'000'000); });
}

TEST(BSplineSurface, ScalesItsControlPointsAlone)
{
    auto const surface = make();
    Surface::scale(surface.get(), 2, 1, 2, 3);
    Values points(18);
    surface->getControlPoints(points.data());
    EXPECT_EQ(points, (Values{1, 2, 3, 7, 8, 9, 13, 14, 15, 19, 20, 21, 25, 26, 27, 31, 32, -3}));
    Values weights(6);
    surface->getWeights(weights.data());
    EXPECT_EQ(weights, Values(Weights, Weights + 6));
    Values knots(3);
    Counts multiplicities(3);
    surface->getKnotsV(knots.data(), multiplicities.data());
    EXPECT_EQ(knots, Values(KnotsV, KnotsV + 3));
}

TEST(BSplineSurface, TableHoldsItsOperationsInOrder)
{
    EXPECT_EQ(tests::slotOf(&BSplineSurface::getSurfaceForm), 5U);
    EXPECT_EQ(tests::slotOf(&BSplineSurface::getSplineFormU), 6U);
    EXPECT_EQ(tests::slotOf(&BSplineSurface::getSplineFormV), 7U);
    EXPECT_EQ(tests::slotOf(&BSplineSurface::isRational), 8U);
    EXPECT_EQ(tests::slotOf(&BSplineSurface::getNumControlPointsU), 9U);
    EXPECT_EQ(tests::slotOf(&BSplineSurface::getNumControlPointsV), 10U);
    EXPECT_EQ(tests::slotOf(&BSplineSurface::getControlPoints), 11U);
    EXPECT_EQ(tests::slotOf(&BSplineSurface::getWeights), 12U);
    EXPECT_EQ(tests::slotOf(&BSplineSurface::getNumKnotsU), 13U);
    EXPECT_EQ(tests::slotOf(&BSplineSurface::getNumKnotsV), 14U);
    EXPECT_EQ(tests::slotOf(&BSplineSurface::getKnotsU), 15U);
    EXPECT_EQ(tests::slotOf(&BSplineSurface::getKnotsV), 16U);
}

} // namespace
} // namespace geom
