#include "product_fixture.h"
#include "support/shapes.h"
#include "support/slots.h"

#include <array>
#include <limits>

namespace transl_tk {
namespace {

using tests::stands;
using Transform = std::array<double, 16>;

constexpr Transform identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

Transform transformOf(Hierarchy * node)
{
    Transform transform{};
    node->getTransform(transform.data());
    return transform;
}

class HierarchyTest : public tests::ProductTest
{
protected:
    Part * m_Part = Part::create(10, "part");
    Assembly * m_Assembly = Assembly::create(20, "assembly");
    Instance * m_Instance = Instance::create(30, m_Part);
    Hierarchy * m_All[3] = {m_Part, m_Assembly, m_Instance};
};

TEST_F(HierarchyTest, EveryClassIsOfKindSevenAndOfItsOwnType)
{
    for (Hierarchy * const node : m_All)
        EXPECT_EQ(node->getEntityKind(), 7);
    EXPECT_EQ(m_Part->getHierarchyType(), 1);
    EXPECT_EQ(m_Assembly->getHierarchyType(), 2);
    EXPECT_EQ(m_Instance->getHierarchyType(), 3);
    EXPECT_EQ(Hierarchy::Part, 1);
    EXPECT_EQ(Hierarchy::Assembly, 2);
    EXPECT_EQ(Hierarchy::Instance, 3);
}

TEST_F(HierarchyTest, ANewNodeHasTheIdentityAndNoParent)
{
    for (Hierarchy * const node : m_All) {
        EXPECT_EQ(transformOf(node), identity);
        EXPECT_EQ(node->getParent(), nullptr);
    }
}

TEST_F(HierarchyTest, ATransformIsKeptAndSetAgain)
{
    Transform ascending{};
    for (std::size_t i = 0; i < ascending.size(); ++i)
        ascending[i] = static_cast<double>(i) + 0.5;
    for (Hierarchy * const node : m_All) {
        node->setTransform(ascending.data());
        EXPECT_EQ(transformOf(node), ascending);
        node->setTransform(identity.data());
        EXPECT_EQ(transformOf(node), identity);
        node->setTransform(ascending.data());
        ascending[3] = -1;
        node->setTransform(ascending.data());
        EXPECT_EQ(transformOf(node), ascending);
    }
}

TEST_F(HierarchyTest, TransformsThatOnlyLookLikeTheIdentityKeepTheirBits)
{
    for (double const odd : {tests::NegativeZero, tests::OddNan, 1e-300}) {
        Transform transform = identity;
        transform[7] = odd;
        m_Instance->setTransform(transform.data());
        EXPECT_EQ(tests::bitsOf(transformOf(m_Instance)), tests::bitsOf(transform));
    }
}

TEST_F(HierarchyTest, SetParentOnlyStoresThePointer)
{
    for (Hierarchy * const node :
         {static_cast<Hierarchy *>(m_Part), static_cast<Hierarchy *>(m_Instance)}) {
        node->setParent(m_Assembly);
        EXPECT_EQ(node->getParent(), m_Assembly);
    }
    EXPECT_TRUE(tests::childrenOf(m_Assembly).empty());
    m_Part->setParent(nullptr);
    EXPECT_EQ(m_Part->getParent(), nullptr);
}

TEST_F(HierarchyTest, AllClassesShareOneRangeOfIds)
{
    EXPECT_EQ(Assembly::create(10, "taken"), nullptr);
    EXPECT_EQ(Part::create(20, "taken"), nullptr);
    EXPECT_EQ(Instance::create(10, m_Part), nullptr);
    EXPECT_EQ(Part::create(0, "next")->getId(), 31);
    EXPECT_EQ(Assembly::create(0, "next")->getId(), 32);
    EXPECT_EQ(Instance::create(0, m_Part)->getId(), 33);
    EXPECT_EQ(Part::create(-5, "negative")->getId(), -5);
}

TEST_F(HierarchyTest, ATakenIdTakesNoNameAndNoPlaceAmongTheInstances)
{
    Part::create(20, "free");
    Assembly::create(10, "free");
    Instance::create(20, m_Part);
    EXPECT_STREQ(Part::create(0, "free")->getName(), "free");
    EXPECT_EQ(tests::instancesOf(m_Part), std::vector<Instance *>{m_Instance});
}

TEST_F(HierarchyTest, DestructionLeavesTheStore)
{
    Hierarchy::destruct(m_Assembly);
    EXPECT_EQ(tests::hierarchies().lookup(20), nullptr);
    Hierarchy::destruct(m_Instance);
    EXPECT_EQ(tests::hierarchies().lookup(30), nullptr);
    Hierarchy::destruct(m_Part);
    EXPECT_TRUE(tests::hierarchies().empty());
    Hierarchy::destruct(nullptr);
}

TEST_F(HierarchyTest, NameIsTheComponentsOwnOrThatOfTheInstancesComponent)
{
    EXPECT_STREQ(Hierarchy::name(m_Part), "part");
    EXPECT_STREQ(Hierarchy::name(m_Assembly), "assembly");
    EXPECT_STREQ(Hierarchy::name(m_Instance), "part");
    EXPECT_STREQ(Hierarchy::name(Instance::create(0, m_Assembly)), "assembly");
    EXPECT_EQ(Hierarchy::name(nullptr), nullptr);
}

TEST_F(HierarchyTest, TopLevelIsWhatHasNoParentInOrderOfIds)
{
    Part * const child = Part::create(5, "child");
    m_Assembly->addChild(child);
    Part * const first = Part::create(-3, "first");
    Hierarchy * const before = m_Part;
    std::vector<Hierarchy *> out = {before};
    Hierarchy::gatherTopLevelHierarchies(out);
    EXPECT_EQ(out, (tests::Nodes{before, first, m_Part, m_Assembly, m_Instance}));
}

TEST(HierarchyWithoutAPool, HasNoTopLevel)
{
    std::vector<Hierarchy *> out;
    Hierarchy::gatherTopLevelHierarchies(out);
    EXPECT_TRUE(out.empty());
    EXPECT_EQ(Part::create(0, "part"), nullptr);
    EXPECT_EQ(Assembly::create(0, "assembly"), nullptr);
}

TEST_F(HierarchyTest, AnAssemblyFreesItsDescendants)
{
    Assembly * const inner = Assembly::create(0, "inner");
    m_Assembly->addChild(inner);
    m_Assembly->addChild(m_Instance);
    inner->addChild(m_Part);
    Hierarchy::destruct(m_Assembly);
    EXPECT_TRUE(tests::hierarchies().empty());
}

TEST_F(HierarchyTest, AssembliesNestedVeryDeepAreFreedOnASmallStack)
{
    tests::onASmallStack([] { Hierarchy::destruct(tests::aChain(tests::VeryDeep)); });
    EXPECT_EQ(tests::hierarchies().size(), 3U);
}

TEST_F(HierarchyTest, AssembliesNestedVeryDeepAreClearedOnASmallStack)
{
    tests::onASmallStack([] {
        tests::aChain(tests::VeryDeep);
        Pool::getInstance()->clear();
    });
    EXPECT_TRUE(tests::hierarchies().empty());
}

TEST_F(HierarchyTest, ARingOfAssembliesIsFreedWhole)
{
    Assembly * const other = Assembly::create(0, "other");
    m_Assembly->addChild(other);
    other->addChild(m_Assembly);
    other->addChild(m_Instance);
    Hierarchy::destruct(m_Assembly);
    EXPECT_EQ(tests::hierarchies().size(), 1U);
    EXPECT_TRUE(stands(m_Part, 10));
}

TEST_F(HierarchyTest, AnAssemblyInItselfIsFreed)
{
    m_Assembly->addChild(m_Assembly);
    Hierarchy::destruct(m_Assembly);
    EXPECT_EQ(tests::hierarchies().lookup(20), nullptr);
}

TEST_F(HierarchyTest, ARingThatItsParentsDoNotShowIsFreedWhole)
{
    Assembly * const other = Assembly::create(0, "other");
    m_Assembly->addChild(other);
    m_Assembly->setParent(nullptr);
    other->addChild(m_Assembly);
    m_Assembly->setParent(nullptr);
    other->setParent(nullptr);
    Hierarchy::destruct(other);
    EXPECT_EQ(tests::hierarchies().size(), 2U);
}

TEST_F(HierarchyTest, ClearLeavesNoneBehindWhateverParentsSay)
{
    Assembly * const other = Assembly::create(0, "other");
    Assembly * const gone = Assembly::create(0, "gone");
    m_Assembly->addChild(other);
    other->addChild(m_Assembly);
    Part * const unlisted = Part::create(0, "unlisted");
    unlisted->setParent(gone);
    Hierarchy::destruct(gone);
    Part * const denied = Part::create(0, "denied");
    other->addChild(denied);
    denied->setParent(nullptr);
    Assembly * const deniedAssembly = Assembly::create(0, "denied assembly");
    other->addChild(deniedAssembly);
    deniedAssembly->setParent(nullptr);
    m_Part->removeInstance(m_Instance);
    Assembly * const self = Assembly::create(0, "self");
    self->addChild(self);
    Pool::getInstance()->clear();
    EXPECT_TRUE(tests::hierarchies().empty());
    EXPECT_TRUE(tests::currentSubPool().m_Names.empty());
}

TEST_F(HierarchyTest, ClearPassesOverAnAssemblyThatWentWithOneThatListsIt)
{
    Assembly * const listed = Assembly::create(0, "listed");
    m_Assembly->addChild(listed);
    listed->setParent(nullptr);
    Pool::getInstance()->clear();
    EXPECT_TRUE(tests::hierarchies().empty());
}

TEST_F(HierarchyTest, ANodeFreedUnderAnotherSubPoolLeavesItsParent)
{
    m_Assembly->addChild(m_Instance);
    Pool::getInstance()->newWorkingSubPool("other");
    Hierarchy::destruct(m_Instance);
    EXPECT_TRUE(tests::childrenOf(m_Assembly).empty());
    EXPECT_TRUE(tests::instancesOf(m_Part).empty());
}

TEST_F(HierarchyTest, TableHoldsKindTransformParentAndType)
{
    EXPECT_EQ(tests::slotOf(&Hierarchy::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&Hierarchy::getTransform), 3U);
    EXPECT_EQ(tests::slotOf(&Hierarchy::setTransform), 4U);
    EXPECT_EQ(tests::slotOf(&Hierarchy::getParent), 5U);
    EXPECT_EQ(tests::slotOf(&Hierarchy::setParent), 6U);
    EXPECT_EQ(tests::slotOf(&Hierarchy::getHierarchyType), 7U);
}

} // namespace
} // namespace transl_tk
