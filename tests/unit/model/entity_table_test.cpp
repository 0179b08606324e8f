#include "support/models.h"

#include <keld-transl/model/entity_table.h>

#include <algorithm>
#include <gtest/gtest.h>

namespace transl_tk {
namespace {

class EntityTableTest : public testing::Test
{
protected:
    EntityTable const & table() { return tests::currentSubPool().m_Points.m_Entities; }

    std::vector<int> ids()
    {
        std::vector<int> found;
        for (auto const & [id, entity] : table())
            found.push_back(id);
        return found;
    }

    tests::ScopedPool m_Pool;
};

TEST_F(EntityTableTest, IteratesInNumericOrderFromNegativeIdsOn)
{
    for (int const id : {5, -3, 700, -70000, 2147483647, -2147483647 - 1})
        Point3D::create(id, 0, 0, 0);
    EXPECT_EQ(ids(), (std::vector<int>{-2147483647 - 1, -70000, -3, 5, 700, 2147483647}));
}

TEST_F(EntityTableTest, IteratesBackwards)
{
    for (int const id : {3, 1, 2})
        Point3D::create(id, 0, 0, 0);
    std::vector<int> found;
    for (auto at = table().end(); at != table().begin();)
        found.push_back((--at)->first);
    EXPECT_EQ(found, (std::vector<int>{3, 2, 1}));
}

TEST_F(EntityTableTest, AnEmptyTableHasNoBeginning)
{
    EXPECT_TRUE(table().begin() == table().end());
    EXPECT_TRUE(table().empty());
    EXPECT_EQ(table().size(), 0U);
}

TEST_F(EntityTableTest, FindsAnEntityUnderItsId)
{
    Point3D * const point = Point3D::create(42, 1, 2, 3);
    ASSERT_TRUE(table().find(42) != table().end());
    EXPECT_EQ(table().find(42)->second, point);
    EXPECT_EQ(table().find(42)->first, 42);
    EXPECT_EQ(table().lookup(42), point);
    EXPECT_EQ(table().count(42), 1U);
    EXPECT_TRUE(table().find(41) == table().end());
    EXPECT_EQ(table().lookup(41), nullptr);
    EXPECT_EQ(table().count(41), 0U);
}

TEST_F(EntityTableTest, AnIteratorOutlivesTheLeavingOfOtherEntities)
{
    for (int id = 1; id <= 300; ++id)
        Point3D::create(id, 0, 0, 0);
    auto at = table().find(150);
    for (int id = 1; id <= 300; ++id)
        if (id != 150 && id != 250)
            Point3D::destruct(static_cast<Point3D *>(table().lookup(id)));
    EXPECT_EQ((++at)->first, 250);
    EXPECT_TRUE(++at == table().end());
}

TEST_F(EntityTableTest, CopiesShareTheEntitiesAndNothingElse)
{
    Point3D * const point = Point3D::create(1, 0, 0, 0);
    EntityTable const copy(table());
    Point3D::create(2, 0, 0, 0);
    EXPECT_EQ(copy.size(), 1U);
    EXPECT_EQ(copy.lookup(1), point);
}

} // namespace
} // namespace transl_tk
