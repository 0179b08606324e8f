#include "support/models.h"
#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/topology/uv_curve.h>

#include <gtest/gtest.h>

namespace transl_tk {
namespace {

class UVCurveTest : public testing::Test
{
protected:
    tests::ForeignUVCurve * shape(char const * name)
    {
        return new tests::ForeignUVCurve(m_Ends, name);
    }
    static EntityTable const & table() { return tests::currentSubPool().m_UVCurves.m_Entities; }

    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
};

TEST_F(UVCurveTest, CarriesAndOwnsItsShape)
{
    geom::UVCurve * const carried = shape("carried");
    UVCurve * const carrier = UVCurve::create(0, carried);
    EXPECT_EQ(carrier->getCurve(), carried);
    EXPECT_TRUE(m_Ends.empty());
    UVCurve::destruct(carrier);
    EXPECT_EQ(m_Ends, (tests::Ends{"carried"}));
}

TEST_F(UVCurveTest, MayCarryNull)
{
    UVCurve * const carrier = UVCurve::create(3, nullptr);
    ASSERT_NE(carrier, nullptr);
    EXPECT_EQ(carrier->getCurve(), nullptr);
    EXPECT_EQ(table().lookup(3), carrier);
    UVCurve::destruct(carrier);
    EXPECT_TRUE(table().empty());
}

TEST_F(UVCurveTest, LeavesTheShapeToTheCallerWhenItsIdIsTaken)
{
    UVCurve::create(5, shape("first"));
    auto const second = tests::owned<geom::UVCurve>(shape("second"));
    EXPECT_EQ(UVCurve::create(5, second.get()), nullptr);
    EXPECT_TRUE(m_Ends.empty());
}

TEST_F(UVCurveTest, StandsInItsStoreUntilItsEnd)
{
    UVCurve * const carrier = UVCurve::create(5, shape("shape"));
    EXPECT_EQ(table().lookup(5), carrier);
    UVCurve::destruct(carrier);
    EXPECT_TRUE(table().empty());
    UVCurve::destruct(nullptr);
}

TEST_F(UVCurveTest, IsOfKindThree)
{
    EXPECT_EQ(UVCurve::create(0, shape("shape"))->getEntityKind(), 3);
}

TEST_F(UVCurveTest, TableHoldsKindThenShape)
{
    EXPECT_EQ(tests::slotOf(&UVCurve::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&UVCurve::getCurve), 3U);
}

} // namespace
} // namespace transl_tk
