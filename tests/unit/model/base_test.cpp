#include "support/slots.h"

#include <keld-transl/model/base.h>
#include <keld-transl/model/original_id.h>

#include <gtest/gtest.h>
#include <type_traits>

namespace transl_tk {
namespace {

class Probe : public Base
{
public:
    Probe() = default;
    explicit Probe(int id) : Base(id) {}
    ~Probe() override = default;
    int getEntityKind() override { return 0; }
};

TEST(Base, HasTheIdThatItWasMadeWith)
{
    EXPECT_EQ(Probe(-17).getId(), -17);
    EXPECT_EQ(Probe().getId(), 0);
}

TEST(Base, CopiesItsId)
{
    Probe const original(5);
    Probe copy(original);
    EXPECT_EQ(copy.getId(), 5);
    Probe assigned(6);
    assigned = original;
    EXPECT_EQ(assigned.getId(), 5);
}

TEST(Base, IsDestroyedThroughItsOwnOperationsAlone)
{
    EXPECT_FALSE(std::is_destructible_v<Base>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Base>);
    EXPECT_TRUE(std::is_abstract_v<Base>);
}

TEST(Base, TableHoldsTheDestructorThenTheKind)
{
    EXPECT_EQ(tests::slotOf(&Base::getEntityKind), 2U);
}

TEST(Base, KindsHaveTheirNumbers)
{
    EXPECT_EQ(EntityKindBody, 1);
    EXPECT_EQ(EntityKindCurve3D, 2);
    EXPECT_EQ(EntityKindUVCurve, 3);
    EXPECT_EQ(EntityKindEdge, 4);
    EXPECT_EQ(EntityKindFace, 5);
    EXPECT_EQ(EntityKindFin, 6);
    EXPECT_EQ(EntityKindHierarchy, 7);
    EXPECT_EQ(EntityKindLoop, 8);
    EXPECT_EQ(EntityKindPoint3D, 9);
    EXPECT_EQ(EntityKindCartesianCoord, 10);
    EXPECT_EQ(EntityKindShell, 11);
    EXPECT_EQ(EntityKindSurface, 12);
    EXPECT_EQ(EntityKindTriStrip, 13);
    EXPECT_EQ(EntityKindVertex, 14);
    EXPECT_EQ(EntityKindSpotWeld, 15);
    EXPECT_EQ(EntityKindAnnotation, 16);
}

TEST(OriginalID, IsZeroAtFirst)
{
    EXPECT_EQ(OriginalID().castToInt(), 0);
}

TEST(OriginalID, KeepsAPointersBits)
{
    OriginalID id;
    int target = 0;
    id.setOriginalEnt(&target);
    EXPECT_EQ(id.castToInt(), reinterpret_cast<long long>(&target));
}

TEST(OriginalID, KeepsANumberOfSixtyFourBits)
{
    OriginalID id;
    id.setOriginalEnt(-0x7123456789ABCDEFLL);
    EXPECT_EQ(id.castToInt(), -0x7123456789ABCDEFLL);
}

TEST(OriginalID, CopiesAndMovesItsValue)
{
    OriginalID id;
    id.setOriginalEnt(7LL);
    OriginalID copied;
    copied = id;
    OriginalID moved;
    moved = std::move(id);
    EXPECT_EQ(copied.castToInt(), 7);
    EXPECT_EQ(moved.castToInt(), 7);
    EXPECT_FALSE(std::is_polymorphic_v<OriginalID>);
}

} // namespace
} // namespace transl_tk
