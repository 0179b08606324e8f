#include "model/entity_kinds.h"
#include "support/models.h"

#include <keld-transl/model/base.h>

#include <gtest/gtest.h>

namespace transl_tk {
namespace {

TEST(StoreOfKind, FollowsTheNumbersOfKinds)
{
    EXPECT_EQ(storeOfKind(1), &SubPool::m_Bodies);
    EXPECT_EQ(storeOfKind(2), &SubPool::m_Curves3D);
    EXPECT_EQ(storeOfKind(3), &SubPool::m_UVCurves);
    EXPECT_EQ(storeOfKind(4), &SubPool::m_Edges);
    EXPECT_EQ(storeOfKind(5), &SubPool::m_Faces);
    EXPECT_EQ(storeOfKind(6), &SubPool::m_Fins);
    EXPECT_EQ(storeOfKind(7), &SubPool::m_Hierarchies);
    EXPECT_EQ(storeOfKind(8), &SubPool::m_Loops);
    EXPECT_EQ(storeOfKind(9), &SubPool::m_Points);
    EXPECT_EQ(storeOfKind(10), &SubPool::m_CartesianCoords);
    EXPECT_EQ(storeOfKind(11), &SubPool::m_Shells);
    EXPECT_EQ(storeOfKind(12), &SubPool::m_Surfaces);
    EXPECT_EQ(storeOfKind(13), &SubPool::m_TriStrips);
    EXPECT_EQ(storeOfKind(14), &SubPool::m_Vertices);
    EXPECT_EQ(storeOfKind(15), &SubPool::m_SpotWelds);
    EXPECT_EQ(storeOfKind(16), &SubPool::m_Annotations);
}

TEST(StoreOfKind, IsNullForOtherNumbers)
{
    for (int const kind : {-2147483647 - 1, -1, 0, 17, 2147483647})
        EXPECT_EQ(storeOfKind(kind), nullptr) << kind;
}

TEST(EntityLink, LeadsToAnEntityThatLives)
{
    tests::ScopedPool const pool;
    Point3D * const point = Point3D::create(-7, 1, 2, 3);
    EntityLink const link = EntityLink::to(*point);
    EXPECT_EQ(link.kind, 9);
    EXPECT_EQ(link.id, -7);
    EXPECT_EQ(link.get(tests::currentSubPool()), point);
}

TEST(EntityLink, LeadsNowhereOnceTheEntityIsGone)
{
    tests::ScopedPool const pool;
    Point3D * const point = Point3D::create(7, 1, 2, 3);
    EntityLink const link = EntityLink::to(*point);
    Point3D::destruct(point);
    EXPECT_EQ(link.get(tests::currentSubPool()), nullptr);
}

TEST(EntityLink, LeadsNowhereWhenAnotherEntityHasTheId)
{
    tests::ScopedPool const pool;
    EntityLink link = EntityLink::to(*Point3D::create(7, 1, 2, 3));
    Point3D * const other = Point3D::create(8, 1, 2, 3);
    link.entity = other;
    EXPECT_EQ(link.get(tests::currentSubPool()), nullptr);
}

TEST(EntityLink, LeadsNowhereInAnotherSubPool)
{
    tests::ScopedPool const pool("a");
    EntityLink const link = EntityLink::to(*Point3D::create(7, 1, 2, 3));
    SubPool & first = tests::currentSubPool();
    Pool::construct("b");
    Point3D::create(7, 1, 2, 3);
    EXPECT_EQ(link.get(tests::currentSubPool()), nullptr);
    EXPECT_NE(link.get(first), nullptr);
}

class ForeignEntity : public Base
{
public:
    ForeignEntity() : Base(7) {}
    int getEntityKind() override { return 17; }
};

TEST(EntityLink, LeadsNowhereForAKindThatHasNoStore)
{
    tests::ScopedPool const pool;
    ForeignEntity entity;
    EXPECT_EQ(EntityLink::to(entity).get(tests::currentSubPool()), nullptr);
}

} // namespace
} // namespace transl_tk
