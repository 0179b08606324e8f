#include "support/models.h"
#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/topology/curve3d.h>

#include <gtest/gtest.h>

namespace transl_tk {
namespace {

class Curve3DTest : public testing::Test
{
protected:
    tests::ForeignCurve * shape(char const * name) { return new tests::ForeignCurve(m_Ends, name); }
    static EntityTable const & table() { return tests::currentSubPool().m_Curves3D.m_Entities; }

    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
};

TEST_F(Curve3DTest, CarriesAndOwnsItsShape)
{
    geom::Curve * const carried = shape("carried");
    Curve3D * const carrier = Curve3D::create(0, carried);
    EXPECT_EQ(carrier->getCurve(), carried);
    EXPECT_TRUE(m_Ends.empty());
    Curve3D::destruct(carrier);
    EXPECT_EQ(m_Ends, (tests::Ends{"carried"}));
}

TEST_F(Curve3DTest, IsNotMadeOfNullAndTakesNoId)
{
    EXPECT_EQ(Curve3D::create(3, nullptr), nullptr);
    EXPECT_EQ(Curve3D::create(0, nullptr), nullptr);
    EXPECT_TRUE(table().empty());
    EXPECT_EQ(Curve3D::create(0, shape("curve"))->getId(), 1);
}

TEST_F(Curve3DTest, LeavesTheShapeToTheCallerWhenItsIdIsTaken)
{
    Curve3D::create(5, shape("first"));
    auto const second = tests::owned<geom::Curve>(shape("second"));
    EXPECT_EQ(Curve3D::create(5, second.get()), nullptr);
    EXPECT_TRUE(m_Ends.empty());
}

TEST_F(Curve3DTest, StandsInItsStoreUntilItsEnd)
{
    Curve3D * const carrier = Curve3D::create(5, shape("shape"));
    EXPECT_EQ(table().lookup(5), carrier);
    Curve3D::destruct(carrier);
    EXPECT_TRUE(table().empty());
    Curve3D::destruct(nullptr);
}

TEST_F(Curve3DTest, IsOfKindTwo)
{
    EXPECT_EQ(Curve3D::create(0, shape("shape"))->getEntityKind(), 2);
}

TEST_F(Curve3DTest, TableHoldsKindThenShape)
{
    EXPECT_EQ(tests::slotOf(&Curve3D::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&Curve3D::getCurve), 3U);
}

} // namespace
} // namespace transl_tk
