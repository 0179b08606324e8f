#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/composite_curve.h>
#include <keld-transl/geom/line.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

using Curves = std::vector<Curve *>;

tests::Owned<CompositeCurve> of(Curves curves)
{
    return tests::owned(CompositeCurve::create(
        curves.data(), static_cast<unsigned int>(curves.size()), tests::parameters({8, 9})));
}

bool collect(Curve * curve, void * user)
{
    static_cast<Curves *>(user)->push_back(curve);
    return true;
}

bool collectOne(Curve * curve, void * user)
{
    collect(curve, user);
    return false;
}

TEST(CompositeCurve, WalksItsMembersInOrderNullOnesIncluded)
{
    auto const first = tests::owned(Line::create(tests::At, tests::AxisX, {}));
    auto const second = tests::owned(Line::create(tests::At, tests::AxisY, {}));
    Curves const members = {second.get(), nullptr, first.get(), second.get()};
    auto const composite = of(members);
    Curves seen;
    EXPECT_TRUE(composite->forEachCurve(collect, &seen));
    EXPECT_EQ(seen, members);
    EXPECT_EQ(composite->getType(), Curve::Type::CompositeCurve);
    EXPECT_EQ(composite->getParameterization().m_Values, (std::vector<double>{8, 9}));
}

TEST(CompositeCurve, WalkStopsAtTheFirstFalse)
{
    auto const line = tests::owned(Line::create(tests::At, tests::AxisX, {}));
    Curves seen;
    EXPECT_FALSE(of({line.get(), line.get()})->forEachCurve(collectOne, &seen));
    EXPECT_EQ(seen, (Curves{line.get()}));
}

TEST(CompositeCurve, WalkOfAnEmptyOneIsTrue)
{
    Curves seen;
    EXPECT_TRUE(of({})->forEachCurve(collectOne, &seen));
    EXPECT_TRUE(seen.empty());
}

TEST(CompositeCurve, OwnsNothing)
{
    tests::Ends ends;
    tests::ForeignCurve member(ends, "member");
    of({&member}).reset();
    EXPECT_TRUE(ends.empty());
}

TEST(CompositeCurve, DoesNotScale)
{
    auto const line = tests::owned(Line::create(tests::At, tests::AxisX, {}));
    Curve::scale(of({line.get()}).get(), 2, 1, 1, 1);
    EXPECT_EQ(tests::tripleOf(line, &Line::getPoint), (tests::Triple{2, 3, 4}));
}

TEST(CompositeCurve, TableHoldsTheWalk)
{
    EXPECT_EQ(tests::slotOf(&CompositeCurve::forEachCurve), 6U);
}

} // namespace
} // namespace geom
