#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/line.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

using tests::tripleOf;

TEST(Line, KeepsPointAndDirectionBitForBit)
{
    double const point[3] = {1, tests::NegativeZero, 3};
    double const direction[3] = {tests::OddNan, 5, 6};
    auto const line = tests::owned(Line::create(point, direction, {}));
    EXPECT_EQ(tests::bitsOf(tripleOf(line, &Line::getPoint)), tests::bitsOf(point));
    EXPECT_EQ(tests::bitsOf(tripleOf(line, &Line::getDirection)), tests::bitsOf(direction));
    EXPECT_EQ(line->getType(), Curve::Type::Line);
}

TEST(Line, ScalesItsPointAndNotTheLengthOfItsDirection)
{
    double const direction[3] = {0, 3, 0};
    auto const line = tests::owned(Line::create(tests::At, direction, {}));
    Curve::scale(line.get(), 2, 1, 1, 1);
    EXPECT_EQ(tripleOf(line, &Line::getPoint), (tests::Triple{3, 5, 7}));
    EXPECT_EQ(tripleOf(line, &Line::getDirection), (tests::Triple{0, 3, 0}));
}

TEST(Line, TableHoldsPointThenDirection)
{
    EXPECT_EQ(tests::slotOf(&Line::getPoint), 6U);
    EXPECT_EQ(tests::slotOf(&Line::getDirection), 7U);
}

} // namespace
} // namespace geom
