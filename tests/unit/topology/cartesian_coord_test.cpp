#include "support/models.h"
#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/topology/cartesian_coord.h>

#include <gtest/gtest.h>

namespace transl_tk {
namespace {

class CartesianCoordTest : public testing::Test
{
protected:
    static CartesianCoord * make(int id)
    {
        double const origin[3] = {1, tests::NegativeZero, 3};
        double const first[3] = {4, 5, 6};
        double const second[3] = {7, 8, tests::OddNan};
        double const third[3] = {10, 11, 12};
        return CartesianCoord::create(id, origin, first, second, third);
    }
    static EntityTable const & table()
    {
        return tests::currentSubPool().m_CartesianCoords.m_Entities;
    }

    tests::ScopedPool m_Pool;
};

TEST_F(CartesianCoordTest, KeepsTheCallersAxesBitForBit)
{
    double origin[3];
    double first[3];
    double second[3];
    double third[3];
    make(0)->getAxes(origin, first, second, third);
    EXPECT_EQ(tests::bitsOf(origin), tests::bitsOf(tests::Triple{1, tests::NegativeZero, 3}));
    EXPECT_EQ(tests::bitsOf(first), tests::bitsOf(tests::Triple{4, 5, 6}));
    EXPECT_EQ(tests::bitsOf(second), tests::bitsOf(tests::Triple{7, 8, tests::OddNan}));
    EXPECT_EQ(tests::bitsOf(third), tests::bitsOf(tests::Triple{10, 11, 12}));
}

TEST_F(CartesianCoordTest, StandsInItsStoreUntilItsEnd)
{
    CartesianCoord * const coord = make(5);
    EXPECT_EQ(table().lookup(5), coord);
    EXPECT_EQ(make(5), nullptr);
    CartesianCoord::destruct(coord);
    EXPECT_TRUE(table().empty());
    CartesianCoord::destruct(nullptr);
}

TEST_F(CartesianCoordTest, IsOfKindTen)
{
    EXPECT_EQ(make(0)->getEntityKind(), 10);
}

TEST_F(CartesianCoordTest, TableHoldsKindThenAxes)
{
    EXPECT_EQ(tests::slotOf(&CartesianCoord::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&CartesianCoord::getAxes), 3U);
}

} // namespace
} // namespace transl_tk
