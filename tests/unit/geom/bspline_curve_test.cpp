#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/bspline_curve.h>

#include <gtest/gtest.h>
#include <stdexcept>

namespace geom {
namespace {

using Values = std::vector<double>;
using Counts = std::vector<int>;

struct Spline
{
    Counts multiplicities;
    Values knots;
    Values points;
    Values weights; ///< none when empty
    Values parameters;
};

tests::Owned<BSplineCurve> make(Spline const & spline)
{
    return tests::owned(BSplineCurve::create(
        3, true, false, static_cast<int>(spline.knots.size()), spline.multiplicities.data(),
        spline.knots.data(), static_cast<int>(spline.points.size() / 3), spline.points.data(),
        spline.weights.empty() ? nullptr : spline.weights.data(),
        tests::parameters(spline.parameters)));
}

/// All that the getters give, with a mark at the end of each array that they must leave alone.
struct Read
{
    explicit Read(BSplineCurve & curve)
        : knots(Length(curve.getNumKnots()), Mark),
          multiplicities(Length(curve.getNumKnots()), static_cast<int>(Mark)),
          points(Length(3 * curve.getNumControlPoints()), Mark),
          weights(Length(curve.getNumControlPoints()), Mark),
          parameters(curve.getParameterization().m_Values)
    {
        curve.getKnots(knots.data(), multiplicities.data());
        curve.getControlPoints(points.data());
        curve.getWeights(weights.data());
    }

    static std::size_t Length(int count) { return static_cast<std::size_t>(count) + 1; }
    static constexpr double Mark = -777;

    Values knots;
    Counts multiplicities;
    Values points;
    Values weights;
    Values parameters;
};

constexpr double Mark = Read::Mark;

TEST(BSplineCurve, GivesBackAllThatItWasMadeWith)
{
    auto const curve =
        make({{4, 2, 4}, {2, 3, 5}, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {10, 11, 12}, {13, 14}});
    Read const read(*curve);
    EXPECT_EQ(read.knots, (Values{2, 3, 5, Mark}));
    EXPECT_EQ(read.multiplicities, (Counts{4, 2, 4, -777}));
    EXPECT_EQ(read.points, (Values{1, 2, 3, 4, 5, 6, 7, 8, 9, Mark}));
    EXPECT_EQ(read.weights, (Values{10, 11, 12, Mark}));
    EXPECT_EQ(read.parameters, (Values{13, 14}));
    EXPECT_TRUE(curve->isRational());
    EXPECT_EQ(curve->getNumKnots(), 3);
    EXPECT_EQ(curve->getNumControlPoints(), 3);
    EXPECT_EQ(curve->getType(), Curve::Type::BSplineCurve);
}

TEST(BSplineCurve, KeepsDegreeAndFlagsApart)
{
    for (bool const flagA : {false, true}) {
        auto const curve = tests::owned(
            BSplineCurve::create(-7, flagA, !flagA, 0, nullptr, nullptr, 0, nullptr, nullptr, {}));
        int degree = 0;
        bool a = !flagA;
        bool b = flagA;
        curve->getSplineForm(degree, a, b);
        EXPECT_EQ(degree, -7);
        EXPECT_EQ(a, flagA);
        EXPECT_EQ(b, !flagA);
    }
}

TEST(BSplineCurve, KeepsEveryBit)
{
    double const odd[] = {tests::OddNan, tests::NegativeZero, 1};
    Values const values(odd, odd + 3);
    auto const curve = make({{1, -1, 0}, values, values, {tests::NegativeZero}, {}});
    Read const read(*curve);
    EXPECT_EQ(tests::bitsOf(Values(read.knots.begin(), read.knots.end() - 1)),
              tests::bitsOf(values));
    EXPECT_EQ(tests::bitsOf(Values(read.points.begin(), read.points.end() - 1)),
              tests::bitsOf(values));
    EXPECT_EQ(tests::bitsOf(Values{read.weights[0]}), tests::bitsOf(Values{tests::NegativeZero}));
}

TEST(BSplineCurve, WithoutWeightsIsNotRationalAndFillsNone)
{
    auto const curve = make({{2, 2}, {0, 1}, {1, 2, 3, 4, 5, 6}, {}, {}});
    EXPECT_FALSE(curve->isRational());
    EXPECT_EQ(Read(*curve).weights, (Values{Mark, Mark, Mark}));
}

TEST(BSplineCurve, WithoutPointsHasNoWeightsEither)
{
    double const weights[] = {1};
    auto const curve = tests::owned(
        BSplineCurve::create(1, false, false, 0, nullptr, nullptr, 0, nullptr, weights, {}));
    EXPECT_FALSE(curve->isRational());
    EXPECT_EQ(curve->getNumKnots(), 0);
    EXPECT_EQ(curve->getNumControlPoints(), 0);
    curve->getKnots(nullptr, nullptr);
    curve->getControlPoints(nullptr);
    curve->getWeights(nullptr);
}

TEST(BSplineCurve, ReflectsKnotsWithTheDifferenceOfTheEndsAndParametersWithTheirSum)
{
    auto const curve = make({{3, 4}, {2, 5}, {1, 2, 3}, {}, {2, 5}});
    curve->reverse();
    Read const read(*curve);
    EXPECT_EQ(read.knots, (Values{-2, 1, Mark}));
    EXPECT_EQ(read.multiplicities, (Counts{4, 3, -777}));
    EXPECT_EQ(read.parameters, (Values{2, 5}));
}

TEST(BSplineCurve, ReversesEveryListInsideToo)
{
    auto const curve =
        make({{1, 2, 3}, {0, 1, 5}, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {10, 11, 12}, {3, 4, 9}});
    curve->reverse();
    Read const read(*curve);
    EXPECT_EQ(read.knots, (Values{0, 4, 5, Mark}));
    EXPECT_EQ(read.multiplicities, (Counts{3, 2, 1, -777}));
    EXPECT_EQ(read.points, (Values{7, 8, 9, 4, 5, 6, 1, 2, 3, Mark}));
    EXPECT_EQ(read.weights, (Values{12, 11, 10, Mark}));
    EXPECT_EQ(read.parameters, (Values{3, 8, 9}));
}

TEST(BSplineCurve, ASingleKnotAndParameterStayWhileThePointsAreReversed)
{
    auto const curve = make({{3}, {2}, {1, 2, 3, 4, 5, 6}, {}, {7}});
    curve->reverse();
    Read const read(*curve);
    EXPECT_EQ(read.knots, (Values{2, Mark}));
    EXPECT_EQ(read.multiplicities, (Counts{3, -777}));
    EXPECT_EQ(read.parameters, (Values{7}));
    EXPECT_EQ(read.points, (Values{4, 5, 6, 1, 2, 3, Mark}));
}

TEST(BSplineCurve, ReversesWithoutAnything)
{
    auto const curve = make({});
    curve->reverse();
    EXPECT_EQ(curve->getNumKnots(), 0);
}

TEST(BSplineCurve, ScalesItsControlPointsAlone)
{
    auto const curve = make({{4, 4}, {2, 5}, {2, 3, 4, 5, 6, 7}, {10, 11}, {13, 14}});
    Curve::scale(curve.get(), 2, 1, 1, 1);
    Read const read(*curve);
    EXPECT_EQ(read.points, (Values{3, 5, 7, 9, 11, 13, Mark}));
    EXPECT_EQ(read.knots, (Values{2, 5, Mark}));
    EXPECT_EQ(read.multiplicities, (Counts{4, 4, -777}));
    EXPECT_EQ(read.weights, (Values{10, 11, Mark}));
    EXPECT_EQ(read.parameters, (Values{13, 14}));
}

TEST(BSplineCurve, NegativeCountIsALengthError)
{
    double const weights[] = {1};
    tests::expectLengthError([&] {
        BSplineCurve::create(1, false, false, -1, nullptr, nullptr, 0, nullptr, nullptr, {});
    });
    tests::expectLengthError([&] {
        int const multiplicity = 1;
        double const knot = 1;
        BSplineCurve::create(1, false, false, 1, &multiplicity, &knot, -1, nullptr, weights, {});
    });
}

TEST(BSplineCurve, TableHoldsItsOperationsInOrder)
{
    EXPECT_EQ(tests::slotOf(&BSplineCurve::getSplineForm), 6U);
    EXPECT_EQ(tests::slotOf(&BSplineCurve::getNumControlPoints), 7U);
    EXPECT_EQ(tests::slotOf(&BSplineCurve::getControlPoints), 8U);
    EXPECT_EQ(tests::slotOf(&BSplineCurve::getWeights), 9U);
    EXPECT_EQ(tests::slotOf(&BSplineCurve::getNumKnots), 10U);
    EXPECT_EQ(tests::slotOf(&BSplineCurve::getKnots), 11U);
    EXPECT_EQ(tests::slotOf(&BSplineCurve::isRational), 12U);
    EXPECT_EQ(tests::slotOf(&BSplineCurve::reverse), 13U);
}

} // namespace
} // namespace geom
