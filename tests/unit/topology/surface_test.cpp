#include "support/models.h"
#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/topology/surface.h>

#include <gtest/gtest.h>

namespace transl_tk {
namespace {

class SurfaceTest : public testing::Test
{
protected:
    tests::ForeignSurface * shape(char const * name)
    {
        return new tests::ForeignSurface(m_Ends, name);
    }
    static EntityTable const & table() { return tests::currentSubPool().m_Surfaces.m_Entities; }

    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
};

TEST_F(SurfaceTest, CarriesAndOwnsItsShape)
{
    geom::Surface * const carried = shape("carried");
    Surface * const carrier = Surface::create(0, carried);
    EXPECT_EQ(carrier->getSurface(), carried);
    EXPECT_TRUE(m_Ends.empty());
    Surface::destruct(carrier);
    EXPECT_EQ(m_Ends, (tests::Ends{"carried"}));
}

TEST_F(SurfaceTest, MayCarryNull)
{
    Surface * const carrier = Surface::create(3, nullptr);
    ASSERT_NE(carrier, nullptr);
    EXPECT_EQ(carrier->getSurface(), nullptr);
    EXPECT_EQ(table().lookup(3), carrier);
    Surface::destruct(carrier);
    EXPECT_TRUE(table().empty());
}

TEST_F(SurfaceTest, LeavesTheShapeToTheCallerWhenItsIdIsTaken)
{
    Surface::create(5, shape("first"));
    auto const second = tests::owned<geom::Surface>(shape("second"));
    EXPECT_EQ(Surface::create(5, second.get()), nullptr);
    EXPECT_TRUE(m_Ends.empty());
}

TEST_F(SurfaceTest, StandsInItsStoreUntilItsEnd)
{
    Surface * const carrier = Surface::create(5, shape("shape"));
    EXPECT_EQ(table().lookup(5), carrier);
    Surface::destruct(carrier);
    EXPECT_TRUE(table().empty());
    Surface::destruct(nullptr);
}

TEST_F(SurfaceTest, IsOfKindTwelve)
{
    EXPECT_EQ(Surface::create(0, shape("shape"))->getEntityKind(), 12);
}

TEST_F(SurfaceTest, TableHoldsKindThenShape)
{
    EXPECT_EQ(tests::slotOf(&Surface::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&Surface::getSurface), 3U);
}

} // namespace
} // namespace transl_tk
