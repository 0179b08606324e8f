#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/circle.h>
#include <keld-transl/geom/curve.h>
#include <keld-transl/geom/line.h>

#include <gtest/gtest.h>
#include <type_traits>

namespace geom {
namespace {

using tests::Ends;
using tests::ForeignCurve;

TEST(Curve, KindsHaveTheirNumbers)
{
    EXPECT_EQ(Curve::Type::Circle, 1);
    EXPECT_EQ(Curve::Type::BSplineCurve, 2);
    EXPECT_EQ(Curve::Type::Ellipse, 3);
    EXPECT_EQ(Curve::Type::Line, 5);
    EXPECT_EQ(Curve::Type::LineStrip, 6);
    EXPECT_EQ(Curve::Type::CompositeCurve, 7);
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<Curve::Type>, int>));
}

TEST(Curve, TableBeginsWithTheDestructor)
{
    EXPECT_EQ(tests::slotOf(&Curve::getParameterization), 2U);
    EXPECT_EQ(tests::slotOf(&Curve::getType), 3U);
    EXPECT_EQ(tests::slotOf(&Curve::getTrimPoints), 4U);
    EXPECT_EQ(tests::slotOf(&Curve::setTrimPoints), 5U);
}

TEST(Curve, IsAbstractAndFreedByDestructAlone)
{
    EXPECT_TRUE(std::is_abstract_v<Curve>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Curve>);
    EXPECT_FALSE(std::is_destructible_v<Curve>);
    EXPECT_TRUE(std::is_copy_assignable_v<Curve>);
}

TEST(Curve, HasNoTrimPointsAtFirst)
{
    auto const line = tests::owned(Line::create(tests::At, tests::AxisX, {}));
    EXPECT_EQ(line->getTrimPoints(), nullptr);
}

// What is not freed, or freed twice, is for the sanitizer run to find.
TEST(Curve, DestructFreesTheTrimPoints)
{
    Curve * const line = Line::create(tests::At, tests::AxisX, {});
    auto * const points = new trimmingPoints(true);
    line->setTrimPoints(points);
    EXPECT_EQ(line->getTrimPoints(), points);
    Curve::destruct(line);
}

TEST(Curve, SettingTrimPointsAgainLeavesTheFirstOnesAlive)
{
    auto const line = tests::owned(Line::create(tests::At, tests::AxisX, {}));
    auto const first = std::make_unique<trimmingPoints>(false);
    auto * const second = new trimmingPoints(false);
    line->setTrimPoints(first.get());
    line->setTrimPoints(second);
    EXPECT_EQ(line->getTrimPoints(), second);
    EXPECT_TRUE(first->getSense());
}

TEST(Curve, EndWithoutDestructLeavesTheTrimPointsToTheCaller)
{
    Ends ends;
    auto const points = std::make_unique<trimmingPoints>(false);
    {
        ForeignCurve curve(ends, "curve");
        curve.setTrimPoints(points.get());
    }
    EXPECT_EQ(ends, (Ends{"curve"}));
    EXPECT_TRUE(points->getSense());
}

TEST(Curve, CopyHasTheSameTrimPoints)
{
    Ends ends;
    auto const points = std::make_unique<trimmingPoints>(false);
    ForeignCurve original(ends, "original");
    original.setTrimPoints(points.get());
    ForeignCurve const copy(original);
    EXPECT_EQ(copy.getTrimPoints(), points.get());
}

TEST(Curve, DestructOfNullDoesNothing)
{
    Curve::destruct(nullptr);
}

TEST(Curve, CopiesItsParameterization)
{
    auto parameters = tests::parameters({1, tests::NegativeZero, tests::OddNan});
    auto const bits = tests::bitsOf(parameters.m_Values);
    auto const line = tests::owned(Line::create(tests::At, tests::AxisX, parameters));
    parameters.m_Values[0] = 9;
    EXPECT_EQ(tests::bitsOf(line->getParameterization().m_Values), bits);
    EXPECT_EQ(line->getParameterization().m_Form, ParamForm::SteppedB);
    EXPECT_EQ(&line->getParameterization(), &line->getParameterization());
}

TEST(Curve, ScalingLeavesParametersAndTrimPoints)
{
    auto const circle = tests::owned(Circle::create(tests::At, tests::AxisX, tests::AxisY,
                                                    tests::Nowhere, 5, tests::parameters({1, 2})));
    auto * const points = new trimmingPoints(false);
    points->setStartPointInPos(7, 0, false);
    circle->setTrimPoints(points);
    Curve::scale(circle.get(), 2, 0, 0, 0);
    EXPECT_EQ(circle->getParameterization().m_Values, (std::vector<double>{1, 2}));
    EXPECT_EQ(points->getStartPoint()[0], 7);
}

TEST(Curve, ScalingPassesOverKindsAndClassesThatAreNoneOfTheLibrarys)
{
    Ends ends;
    for (int type = -1; type <= 8; ++type) {
        ForeignCurve curve(ends, "curve", static_cast<Curve::Type>(type));
        Curve::scale(&curve, 2, 1, 1, 1);
        EXPECT_EQ(curve.getType(), type);
    }
}

} // namespace
} // namespace geom
