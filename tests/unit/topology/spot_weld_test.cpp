#include "support/models.h"
#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/topology/spot_weld.h>

#include <gtest/gtest.h>

namespace transl_tk {
namespace {

using Names = std::vector<std::string>;

class SpotWeldTest : public testing::Test
{
protected:
    static EntityTable const & table() { return tests::currentSubPool().m_SpotWelds.m_Entities; }

    tests::ScopedPool m_Pool;
};

bool collect(char const * name, void * user)
{
    static_cast<Names *>(user)->emplace_back(name);
    return true;
}

bool collectOne(char const * name, void * user)
{
    collect(name, user);
    return false;
}

TEST_F(SpotWeldTest, KeepsItsCoordinatesBitForBit)
{
    SpotWeld * const weld = SpotWeld::create(0, tests::OddNan, tests::NegativeZero, 3);
    tests::Triple at{};
    weld->getCoordinates(at[0], at[1], at[2]);
    EXPECT_EQ(tests::bitsOf(at),
              tests::bitsOf(tests::Triple{tests::OddNan, tests::NegativeZero, 3}));
}

TEST_F(SpotWeldTest, HasNoNamesAtFirst)
{
    Names names;
    EXPECT_TRUE(SpotWeld::create(0, 1, 2, 3)->forEachWeldName(collectOne, &names));
    EXPECT_TRUE(names.empty());
}

TEST_F(SpotWeldTest, WalksCopiesOfItsNamesInOrder)
{
    SpotWeld * const weld = SpotWeld::create(0, 1, 2, 3);
    char name[] = "first";
    weld->addWeldName(name);
    name[0] = 'X';
    weld->addWeldName("");
    weld->addWeldName("first");
    Names names;
    EXPECT_TRUE(weld->forEachWeldName(collect, &names));
    EXPECT_EQ(names, (Names{"first", "", "first"}));
}

TEST_F(SpotWeldTest, WalkStopsAtTheFirstFalse)
{
    SpotWeld * const weld = SpotWeld::create(0, 1, 2, 3);
    weld->addWeldName("first");
    weld->addWeldName("second");
    Names names;
    EXPECT_FALSE(weld->forEachWeldName(collectOne, &names));
    EXPECT_EQ(names, (Names{"first"}));
}

TEST_F(SpotWeldTest, IsNoPointThoughItsNumbersAreTheSame)
{
    Point3D * const point = Point3D::create(1, 1, 2, 3);
    SpotWeld * const weld = SpotWeld::create(1, 1, 2, 3);
    EXPECT_EQ(table().lookup(1), weld);
    EXPECT_EQ(tests::currentSubPool().m_Points.m_Entities.lookup(1), point);
}

TEST_F(SpotWeldTest, StandsInItsStoreUntilItsEnd)
{
    SpotWeld * const weld = SpotWeld::create(5, 1, 2, 3);
    EXPECT_EQ(table().lookup(5), weld);
    EXPECT_EQ(SpotWeld::create(5, 1, 2, 3), nullptr);
    SpotWeld::destruct(weld);
    EXPECT_TRUE(table().empty());
    SpotWeld::destruct(nullptr);
}

TEST_F(SpotWeldTest, IsOfKindFifteen)
{
    EXPECT_EQ(SpotWeld::create(0, 1, 2, 3)->getEntityKind(), 15);
}

TEST_F(SpotWeldTest, TableHoldsItsOperationsInOrder)
{
    EXPECT_EQ(tests::slotOf(&SpotWeld::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&SpotWeld::getCoordinates), 3U);
    EXPECT_EQ(tests::slotOf(&SpotWeld::addWeldName), 4U);
    EXPECT_EQ(tests::slotOf(&SpotWeld::forEachWeldName), 5U);
}

} // namespace
} // namespace transl_tk
