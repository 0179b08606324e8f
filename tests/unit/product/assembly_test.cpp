#include "product_fixture.h"
#include "support/slots.h"

#include <algorithm>
#include <map>
#include <random>
#include <utility>

namespace transl_tk {
namespace {

using tests::childrenOf;
using tests::Nodes;

class AssemblyTest : public tests::ProductTest
{
protected:
    static Part * part(char const * name) { return Part::create(0, name); }

    Assembly * m_Assembly = Assembly::create(0, "assembly");
    Assembly * m_Other = Assembly::create(0, "other");
    Part * m_A = part("A");
    Part * m_B = part("B");
    Part * m_C = part("C");
};

TEST_F(AssemblyTest, ShowsItsChildrenInOrderOfAdding)
{
    EXPECT_TRUE(childrenOf(m_Assembly).empty());
    Instance * const instance = Instance::create(0, m_A);
    for (Hierarchy * const child :
         {static_cast<Hierarchy *>(m_C), static_cast<Hierarchy *>(m_A),
          static_cast<Hierarchy *>(m_Other), static_cast<Hierarchy *>(instance)}) {
        m_Assembly->addChild(child);
        EXPECT_EQ(child->getParent(), m_Assembly);
    }
    EXPECT_EQ(childrenOf(m_Assembly), (Nodes{m_C, m_A, m_Other, instance}));
}

TEST_F(AssemblyTest, AddingAChildMovesIt)
{
    m_Assembly->addChild(m_A);
    m_Assembly->addChild(m_B);
    m_Other->addChild(m_A);
    EXPECT_EQ(childrenOf(m_Assembly), Nodes{m_B});
    EXPECT_EQ(childrenOf(m_Other), Nodes{m_A});
    EXPECT_EQ(m_A->getParent(), m_Other);
}

TEST_F(AssemblyTest, AddingAChildAgainPutsItToTheEnd)
{
    for (Part * const child : {m_A, m_B, m_C})
        m_Assembly->addChild(child);
    m_Assembly->addChild(m_C);
    EXPECT_EQ(childrenOf(m_Assembly), (Nodes{m_A, m_B, m_C}));
    m_Assembly->addChild(m_A);
    EXPECT_EQ(childrenOf(m_Assembly), (Nodes{m_B, m_C}));
    m_Assembly->removeChild(m_C);
    EXPECT_EQ(childrenOf(m_Assembly), (Nodes{m_B, m_A}));
}

TEST_F(AssemblyTest, AChildThatDeniesItsParentKeepsItsNumberWhenItIsAddedAgain)
{
    for (Part * const child : {m_A, m_B, m_C})
        m_Assembly->addChild(child);
    m_A->setParent(nullptr);
    m_Assembly->addChild(m_A);
    EXPECT_EQ(childrenOf(m_Assembly), (Nodes{m_A, m_B, m_C}));
    EXPECT_EQ(m_A->getParent(), m_Assembly);
}

TEST_F(AssemblyTest, RemovingErasesTheEntryAndNothingElse)
{
    m_Assembly->addChild(m_A);
    m_Assembly->addChild(m_B);
    m_Assembly->removeChild(m_A);
    EXPECT_EQ(childrenOf(m_Assembly), Nodes{m_B});
    EXPECT_EQ(m_A->getParent(), m_Assembly);
    m_Assembly->removeChild(m_A);
    m_Assembly->removeChild(m_C);
    EXPECT_EQ(childrenOf(m_Assembly), Nodes{m_B});
}

TEST_F(AssemblyTest, NullIsNoChild)
{
    m_Assembly->addChild(m_A);
    m_Assembly->addChild(m_B);
    m_Assembly->removeChild(m_A);
    m_Assembly->addChild(nullptr);
    m_Assembly->removeChild(nullptr);
    EXPECT_EQ(childrenOf(m_Assembly), Nodes{m_B});
    m_Assembly->addChild(m_C);
    m_Assembly->removeChild(m_B);
    m_Assembly->addChild(m_A);
    EXPECT_EQ(childrenOf(m_Assembly), Nodes{m_C});
}

TEST_F(AssemblyTest, TwoChildrenEndWithOneOrderNumberAfterARemoval)
{
    for (Part * const child : {m_A, m_B, m_C})
        m_Assembly->addChild(child);
    m_Assembly->removeChild(m_A);
    Part * const d = part("D");
    m_Assembly->addChild(d);
    EXPECT_EQ(childrenOf(m_Assembly), (Nodes{m_B, m_C}));
    m_Assembly->removeChild(m_C);
    EXPECT_EQ(childrenOf(m_Assembly), (Nodes{m_B, d}));
}

TEST_F(AssemblyTest, AnUnderstatedNumberComesBeforeTheNumbersAboveIt)
{
    for (Part * const child : {m_A, m_B, m_C})
        m_Assembly->addChild(child);
    m_Assembly->removeChild(m_A);
    m_Assembly->removeChild(m_B);
    Part * const d = part("D");
    m_Assembly->addChild(d);
    EXPECT_EQ(childrenOf(m_Assembly), (Nodes{d, m_C}));
}

TEST_F(AssemblyTest, AnEmptiedAssemblyCountsFromTheStart)
{
    for (Part * const child : {m_A, m_B, m_C})
        m_Assembly->addChild(child);
    for (Part * const child : {m_A, m_B, m_C})
        m_Assembly->removeChild(child);
    EXPECT_TRUE(childrenOf(m_Assembly).empty());
    for (Part * const child : {m_C, m_B})
        m_Assembly->addChild(child);
    EXPECT_EQ(childrenOf(m_Assembly), (Nodes{m_C, m_B}));
}

/// What an assembly's list of children is told to be.
class ToldChildren
{
public:
    void add(Hierarchy * child)
    {
        remove(child);
        m_Entries.emplace_back(child, static_cast<int>(m_Entries.size()));
    }
    void remove(Hierarchy * child)
    {
        std::erase_if(m_Entries, [&](auto const & entry) { return entry.first == child; });
    }
    Nodes walk() const
    {
        std::map<int, Hierarchy *> byNumber;
        for (auto const & [child, number] : m_Entries)
            byNumber.emplace(number, child);
        Nodes found;
        for (auto const & [number, child] : byNumber)
            found.push_back(child);
        return found;
    }

private:
    std::vector<std::pair<Hierarchy *, int>> m_Entries;
};

TEST_F(AssemblyTest, AnyAddingAndRemovingLeavesWhatIsTold)
{
    std::vector<Part *> parts;
    for (int i = 0; i < 300; ++i)
        parts.push_back(part("part"));
    std::mt19937 random(3);
    for (std::size_t const most : {5U, 40U, 300U}) {
        Assembly * const assembly = Assembly::create(0, "random");
        ToldChildren told;
        for (int step = 0; step < 3000; ++step) {
            Part * const child = parts[random() % most];
            // The share of removals changes, so that the list fills and empties.
            if (random() % 8 < (static_cast<unsigned>(step) / 500) % 8) {
                assembly->removeChild(child);
                told.remove(child);
            } else {
                if (child->getParent() != assembly)
                    child->setParent(nullptr);
                assembly->addChild(child);
                told.add(child);
            }
            if (step % 50 == 0) {
                ASSERT_EQ(childrenOf(assembly), told.walk()) << most << ' ' << step;
            }
        }
        for (Part * const child : parts) {
            assembly->removeChild(child);
            child->setParent(nullptr);
        }
        EXPECT_TRUE(childrenOf(assembly).empty());
    }
}

TEST_F(AssemblyTest, ManyChildrenGoOneByOneInAnyOrder)
{
    std::vector<Instance *> all;
    for (int i = 0; i < 20000; ++i) {
        all.push_back(Instance::create(0, m_A));
        m_Assembly->addChild(all.back());
    }
    EXPECT_EQ(childrenOf(m_Assembly), Nodes(all.begin(), all.end()));
    std::vector<Instance *> shuffled = all;
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(5));
    shuffled.resize(19990);
    for (Instance * const instance : shuffled) {
        Hierarchy::destruct(instance);
        std::erase(all, instance);
    }
    EXPECT_EQ(childrenOf(m_Assembly), Nodes(all.begin(), all.end()));
}

TEST_F(AssemblyTest, TheWalkStopsAtTheFirstFalse)
{
    auto const stop = [](Hierarchy *, void * calls) { return ++*static_cast<int *>(calls) < 2; };
    int calls = 0;
    EXPECT_TRUE(m_Assembly->forEachChild(stop, &calls));
    for (Part * const child : {m_A, m_B, m_C})
        m_Assembly->addChild(child);
    EXPECT_FALSE(m_Assembly->forEachChild(stop, &calls));
    EXPECT_EQ(calls, 2);
}

TEST_F(AssemblyTest, TheWalkGoesOverACopyWhichItsCallbackDoesNotChange)
{
    for (Part * const child : {m_A, m_B, m_C})
        m_Assembly->addChild(child);
    Nodes visited;
    m_Assembly->forEachChild(
        [](Hierarchy * child, void * user) {
            static_cast<Nodes *>(user)->push_back(child);
            Assembly * const parent = child->getParent();
            for (Hierarchy * const each : childrenOf(parent))
                parent->removeChild(each);
            parent->addChild(Part::create(0, "new"));
            return true;
        },
        &visited);
    EXPECT_EQ(visited, (Nodes{m_A, m_B, m_C}));
}

TEST_F(AssemblyTest, TheWalkPassesOverChildrenThatItsCallbackFreed)
{
    for (Part * const child : {m_A, m_B, m_C})
        m_Assembly->addChild(child);
    struct Context
    {
        Nodes visited;
        Part * victim;
    } context{{}, m_B};
    m_Assembly->forEachChild(
        [](Hierarchy * child, void * user) {
            auto & [visited, victim] = *static_cast<Context *>(user);
            visited.push_back(child);
            Hierarchy::destruct(victim);
            victim = nullptr;
            return true;
        },
        &context);
    EXPECT_EQ(context.visited, (Nodes{m_A, m_C}));
}

TEST_F(AssemblyTest, TheWalkBearsTheEndOfItsAssembly)
{
    for (Part * const child : {m_A, m_B, m_C})
        m_Assembly->addChild(child);
    int calls = 0;
    EXPECT_TRUE(m_Assembly->forEachChild(
        [](Hierarchy * child, void * user) {
            ++*static_cast<int *>(user);
            Hierarchy::destruct(child->getParent());
            return true;
        },
        &calls));
    EXPECT_EQ(calls, 1);
}

TEST_F(AssemblyTest, AFreedChildLeavesItsAssembly)
{
    Instance * const instance = Instance::create(0, m_B);
    Assembly * const inner = Assembly::create(0, "inner");
    for (Hierarchy * const child : {static_cast<Hierarchy *>(m_A), static_cast<Hierarchy *>(inner),
                                    static_cast<Hierarchy *>(instance)})
        m_Assembly->addChild(child);
    Hierarchy::destruct(m_A);
    EXPECT_EQ(childrenOf(m_Assembly), (Nodes{inner, instance}));
    Hierarchy::destruct(instance);
    EXPECT_EQ(childrenOf(m_Assembly), Nodes{inner});
    Hierarchy::destruct(inner);
    EXPECT_TRUE(childrenOf(m_Assembly).empty());
}

TEST_F(AssemblyTest, NothingFollowsTheParentOfARemovedChildOnceThatIsGone)
{
    Instance * const instance = Instance::create(0, m_B);
    Assembly * const inner = Assembly::create(0, "inner");
    Nodes const removed = {m_A, inner, instance};
    for (Hierarchy * const child : removed) {
        m_Assembly->addChild(child);
        m_Assembly->removeChild(child);
    }
    Assembly * const old = m_Assembly;
    Hierarchy::destruct(m_Assembly);
    for (Hierarchy * const child : removed)
        EXPECT_EQ(child->getParent(), old);
    m_Other->addChild(instance);
    EXPECT_EQ(instance->getParent(), m_Other);
    Hierarchy::destruct(inner);
    Hierarchy::destruct(m_A);
    EXPECT_EQ(childrenOf(m_Other), Nodes{instance});
}

TEST_F(AssemblyTest, AnotherNodeInThePlaceOfAParentThatIsGoneIsLeftAlone)
{
    int const id = m_Assembly->getId();
    m_Assembly->addChild(m_A);
    m_Assembly->removeChild(m_A);
    Hierarchy::destruct(m_Assembly);
    Assembly * const next = Assembly::create(id, "next");
    next->addChild(m_B);
    Hierarchy::destruct(m_A);
    EXPECT_EQ(childrenOf(next), Nodes{m_B});
}

TEST_F(AssemblyTest, AComponentThatIsGoneIsNotFollowedByAnInstanceThatItDropped)
{
    Instance * const instance = Instance::create(0, m_A);
    m_A->removeInstance(instance);
    Hierarchy::destruct(m_A);
    Hierarchy::destruct(instance);
    EXPECT_EQ(tests::hierarchies().size(), 4U);
}

TEST_F(AssemblyTest, AnInstanceOfTheAssemblyItStandsInGoesOnce)
{
    m_Assembly->addChild(Instance::create(0, m_Assembly));
    Instance * const loose = Instance::create(0, m_Assembly);
    loose->setParent(m_Assembly);
    Hierarchy::destruct(m_Assembly);
    EXPECT_EQ(tests::hierarchies().size(), 4U);
}

TEST_F(AssemblyTest, AnInstanceThatGoesWithItsPartBesideItGoesOnce)
{
    m_Assembly->addChild(Instance::create(0, m_A));
    m_Assembly->addChild(m_A);
    m_Assembly->addChild(Instance::create(0, m_A));
    m_Assembly->addChild(Instance::create(0, m_B));
    Hierarchy::destruct(m_Assembly);
    EXPECT_TRUE(tests::instancesOf(m_B).empty());
    EXPECT_EQ(tests::hierarchies().size(), 3U);
}

TEST_F(AssemblyTest, AnAssemblyThatIsListedTwiceGoesOnce)
{
    m_Assembly->addChild(m_A);
    m_A->setParent(nullptr);
    m_Other->addChild(m_A);
    m_Other->setParent(nullptr);
    m_Assembly->addChild(m_Other);
    Hierarchy::destruct(m_Assembly);
    EXPECT_EQ(tests::hierarchies().size(), 2U);
}

TEST_F(AssemblyTest, IsSyntheticWithTheIdMinusOneAndNoName)
{
    EXPECT_FALSE(Assembly::create(0, "")->isSynthetic());
    Assembly * const named = Assembly::create(-1, "name");
    EXPECT_FALSE(named->isSynthetic());
    Hierarchy::destruct(named);
    EXPECT_FALSE(Assembly::create(-1, "")->isSynthetic()) << "its name is @1";
    Pool::getInstance()->clear();
    EXPECT_TRUE(Assembly::create(-1, "")->isSynthetic());
}

TEST_F(AssemblyTest, TableGoesOnWithChildren)
{
    EXPECT_EQ(tests::slotOf(&Assembly::addChild), 18U);
    EXPECT_EQ(tests::slotOf(&Assembly::removeChild), 19U);
    EXPECT_EQ(tests::slotOf(&Assembly::forEachChild), 20U);
    EXPECT_EQ(tests::slotOf(&Assembly::isSynthetic), 21U);
}

class InstanceTest : public AssemblyTest
{};

TEST_F(InstanceTest, PlacesItsComponentAndIsListedThere)
{
    Instance * const instance = Instance::create(0, m_A);
    EXPECT_EQ(instance->getComponent(), m_A);
    EXPECT_EQ(tests::instancesOf(m_A), std::vector<Instance *>{instance});
    Hierarchy::destruct(instance);
    EXPECT_TRUE(tests::instancesOf(m_A).empty());
}

TEST_F(InstanceTest, IsNotMadeOfNullAndTakesNoId)
{
    std::size_t const before = tests::hierarchies().size();
    EXPECT_EQ(Instance::create(0, nullptr), nullptr);
    EXPECT_EQ(Instance::create(77, nullptr), nullptr);
    EXPECT_EQ(tests::hierarchies().size(), before);
}

TEST_F(InstanceTest, TableGoesOnWithTheComponent)
{
    EXPECT_EQ(tests::slotOf(&Instance::getComponent), 8U);
}

} // namespace
} // namespace transl_tk
