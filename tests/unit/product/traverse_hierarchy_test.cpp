#include "product_fixture.h"
#include "support/captured_stream.h"
#include "support/report_capture.h"

#include <keld-transl/product/gather_hierarchies.h>
#include <keld-transl/product/traverse_hierarchy.h>

#include <algorithm>
#include <iostream>

namespace transl_tk {
namespace {

using Calls = std::vector<std::string>;

/// What the callbacks of a walk note and answer.
struct Log
{
    Calls calls;
    std::string refused; ///< the call to answer with false
};

bool note(Log & log, std::string call)
{
    log.calls.push_back(std::move(call));
    return log.calls.back() != log.refused;
}

bool before(Hierarchy * node, void * log)
{
    return note(*static_cast<Log *>(log), std::string("before ") + Hierarchy::name(node));
}

bool after(Hierarchy * node, void * log)
{
    return note(*static_cast<Log *>(log), std::string("after ") + Hierarchy::name(node));
}

/// top with a, inner (with b and an instance of c) and d; c stands apart.
class TraverseTest : public tests::ProductTest
{
protected:
    TraverseTest()
    {
        m_Inner->addChild(Part::create(0, "b"));
        m_Inner->addChild(Instance::create(0, Part::create(0, "c")));
        m_Top->addChild(Part::create(0, "a"));
        m_Top->addChild(m_Inner);
        m_Top->addChild(Part::create(0, "d"));
    }

    bool walk(bool withBefore, bool withAfter, std::string refused = "")
    {
        TraverseHierarchy traverse;
        if (withBefore)
            traverse.setPreActionCB(before);
        if (withAfter)
            traverse.setPostActionCB(after);
        m_Log = {{}, std::move(refused)};
        return traverse.traverse(m_Top, &m_Log);
    }

    Assembly * m_Top = Assembly::create(0, "top");
    Assembly * m_Inner = Assembly::create(0, "inner");
    Log m_Log;
};

TEST_F(TraverseTest, WithoutActionsDoesNothingAndAnswersTrue)
{
    EXPECT_TRUE(walk(false, false));
    EXPECT_TRUE(m_Log.calls.empty());
    EXPECT_TRUE(TraverseHierarchy().traverse(nullptr, nullptr));
}

TEST_F(TraverseTest, CallsTheActionsBeforeAndAfterTheChildren)
{
    EXPECT_TRUE(walk(true, true));
    EXPECT_EQ(m_Log.calls,
              (Calls{"before top", "before a", "after a", "before inner", "before b", "after b",
                     "before c", "after c", "after inner", "before d", "after d", "after top"}));
}

TEST_F(TraverseTest, DescendsWithThePreActionAlone)
{
    EXPECT_TRUE(walk(true, false));
    EXPECT_EQ(m_Log.calls, (Calls{"before top", "before a", "before inner", "before b", "before c",
                                  "before d"}));
}

TEST_F(TraverseTest, TheDescentHangsOnThePreAction)
{
    EXPECT_TRUE(walk(false, true));
    EXPECT_EQ(m_Log.calls, Calls{"after top"});
    EXPECT_FALSE(walk(false, true, "after top"));
}

TEST_F(TraverseTest, ThePreActionsFalseEndsItAtOnce)
{
    EXPECT_FALSE(walk(true, true, "before inner"));
    EXPECT_EQ(m_Log.calls, (Calls{"before top", "before a", "after a", "before inner"}));
    EXPECT_FALSE(walk(true, true, "before b"));
    EXPECT_EQ(m_Log.calls,
              (Calls{"before top", "before a", "after a", "before inner", "before b"}));
    EXPECT_FALSE(walk(true, true, "before top"));
    EXPECT_EQ(m_Log.calls, Calls{"before top"});
}

TEST_F(TraverseTest, ThePostActionsFalseEndsItAtOnce)
{
    EXPECT_FALSE(walk(true, true, "after a"));
    EXPECT_EQ(m_Log.calls, (Calls{"before top", "before a", "after a"}));
    EXPECT_FALSE(walk(true, true, "after inner"));
    EXPECT_EQ(m_Log.calls.back(), "after inner");
    EXPECT_FALSE(walk(true, true, "after top"));
    EXPECT_EQ(m_Log.calls.size(), 12U);
}

TEST_F(TraverseTest, IsReusedWithOtherActions)
{
    TraverseHierarchy traverse;
    traverse.setPreActionCB(before);
    traverse.setPostActionCB(after);
    traverse.setPreActionCB(nullptr);
    EXPECT_TRUE(traverse.traverse(m_Top, &m_Log));
    traverse.setPostActionCB(nullptr);
    EXPECT_TRUE(traverse.traverse(m_Top, &m_Log));
    EXPECT_EQ(m_Log.calls, Calls{"after top"});
}

TEST_F(TraverseTest, StartsAtPartsAndInstancesAsWell)
{
    TraverseHierarchy traverse;
    traverse.setPreActionCB(before);
    traverse.setPostActionCB(after);
    EXPECT_TRUE(traverse.traverse(Instance::create(0, m_Top), &m_Log));
    EXPECT_EQ(m_Log.calls, (Calls{"before top", "after top"}));
}

TEST_F(TraverseTest, PassesOverChildrenThatAnActionFreed)
{
    TraverseHierarchy traverse;
    traverse.setPreActionCB([](Hierarchy * node, void * log) {
        if (std::string(Hierarchy::name(node)) == "a")
            for (Hierarchy * const child : tests::childrenOf(node->getParent()))
                if (std::string(Hierarchy::name(child)) == "inner")
                    Hierarchy::destruct(child);
        return before(node, log);
    });
    EXPECT_TRUE(traverse.traverse(m_Top, &m_Log));
    EXPECT_EQ(m_Log.calls, (Calls{"before top", "before a", "before d"}));
}

TEST_F(TraverseTest, SeesTheChildrenThatThePreActionAdded)
{
    TraverseHierarchy traverse;
    traverse.setPreActionCB([](Hierarchy * node, void * log) {
        if (std::string(Hierarchy::name(node)) == "inner")
            static_cast<Assembly *>(node)->addChild(Part::create(0, "new"));
        return before(node, log);
    });
    EXPECT_TRUE(traverse.traverse(m_Inner, &m_Log));
    EXPECT_EQ(m_Log.calls, (Calls{"before inner", "before b", "before c", "before new"}));
}

TEST_F(TraverseTest, AnAssemblyThatIsItsOwnDescendantEndsTheWalkWithAnErrorLine)
{
    m_Inner->addChild(m_Top);
    tests::CapturedStream const errors(std::cerr);
    tests::ReportCapture const report;
    EXPECT_FALSE(walk(true, true));
    EXPECT_EQ(m_Log.calls, (Calls{"before top", "before a", "after a", "before inner", "before b",
                                  "after b", "before c", "after c"}));
    EXPECT_EQ(errors.text(),
              "    Error : The assembly \"top\" is its own descendant; the walk ends there.\n");
}

TEST_F(TraverseTest, AnAssemblyAtTwoPlacesIsNoDescendantOfItself)
{
    Assembly * const second = Assembly::create(0, "second");
    m_Top->addChild(second);
    m_Inner->setParent(nullptr);
    second->addChild(m_Inner);
    EXPECT_TRUE(walk(true, false));
    EXPECT_EQ(std::count(m_Log.calls.begin(), m_Log.calls.end(), "before inner"), 2);
}

TEST_F(TraverseTest, GoesVeryDeepOnASmallStack)
{
    tests::onASmallStack([] {
        TraverseHierarchy traverse;
        traverse.setPreActionCB([](Hierarchy *, void * calls) {
            ++*static_cast<int *>(calls);
            return true;
        });
        traverse.setPostActionCB([](Hierarchy *, void * calls) {
            ++*static_cast<int *>(calls);
            return true;
        });
        int calls = 0;
        EXPECT_TRUE(traverse.traverse(tests::aChain(tests::VeryDeep), &calls));
        EXPECT_EQ(calls, 2 * tests::VeryDeep);
    });
}

TEST(GatherHierarchies, SortsTheEntriesByTheirType)
{
    tests::ScopedPool const pool;
    Part * const late = Part::create(9, "late");
    Instance * const instance = Instance::create(4, late);
    Assembly * const assembly = Assembly::create(6, "assembly");
    Part * const early = Part::create(2, "early");
    std::vector<Assembly *> assemblies = {assembly};
    std::vector<Part *> parts;
    std::vector<Instance *> instances;
    EntityTable const & table = tests::hierarchies();
    std::for_each(table.begin(), table.end(), GatherHierarchies(assemblies, parts, instances));
    EXPECT_EQ(assemblies, (std::vector<Assembly *>{assembly, assembly}));
    EXPECT_EQ(parts, (std::vector<Part *>{early, late}));
    EXPECT_EQ(instances, std::vector<Instance *>{instance});
}

class TopAssemblyTest : public tests::ProductTest
{};

TEST(TopAssembly, IsNullWithoutAPool)
{
    EXPECT_EQ(Hierarchy::getTopAssembly(), nullptr);
}

TEST_F(TopAssemblyTest, IsNullInAnEmptyModel)
{
    EXPECT_EQ(Hierarchy::getTopAssembly(), nullptr);
    EXPECT_TRUE(tests::hierarchies().empty());
}

TEST_F(TopAssemblyTest, IsTheOnlyAssemblyOnTop)
{
    Assembly * const top = Assembly::create(0, "top");
    top->addChild(Assembly::create(0, "inner"));
    EXPECT_EQ(Hierarchy::getTopAssembly(), top);
    EXPECT_EQ(tests::hierarchies().size(), 2U);
}

TEST_F(TopAssemblyTest, IsMadeAboveASinglePartWithItsLengthType)
{
    Part * const part = Part::create(0, "part");
    part->setUnits(Units::create(Units::Inch, Units::AngularType{5}, 3.0, 4.0));
    Assembly * const top = Hierarchy::getTopAssembly();
    EXPECT_EQ(top->getId(), -1);
    EXPECT_STREQ(top->getName(), "");
    EXPECT_TRUE(top->isSynthetic());
    EXPECT_EQ(top->getUnits()->getLengthType(), Units::Inch);
    EXPECT_EQ(top->getUnits()->getAngularType(), 0);
    EXPECT_EQ(top->getUnits()->getLengthScale(), 1.0);
    EXPECT_EQ(top->getUnits()->getAngularScale(), 1.0);
    EXPECT_EQ(tests::childrenOf(top), tests::Nodes{part});
    EXPECT_EQ(part->getParent(), top);
    EXPECT_EQ(Hierarchy::getTopAssembly(), top);
    EXPECT_EQ(tests::hierarchies().size(), 2U);
}

TEST_F(TopAssemblyTest, TheOddLengthTypeThatGetTopAssemblyTakesFromAnInstanceIsSeven)
{
    Assembly * const first = Assembly::create(0, "first");
    Assembly * const second = Assembly::create(0, "second");
    first->addChild(second);
    second->addChild(first);
    Instance * const instance = Instance::create(0, first);
    Assembly * const top = Hierarchy::getTopAssembly();
    EXPECT_EQ(tests::childrenOf(top), tests::Nodes{instance});
    EXPECT_EQ(top->getUnits()->getLengthType(), 7);
    EXPECT_EQ(top->getUnits()->getAngularType(), 0);
    EXPECT_TRUE(top->isSynthetic());
}

TEST_F(TopAssemblyTest, IsNamedUnderscoreAboveSeveralAndHasTheUsualUnits)
{
    Part * const part = Part::create(0, "part");
    part->setUnits(Units::create(Units::Inch, Units::AngularType{5}, 3.0, 4.0));
    Assembly * const assembly = Assembly::create(0, "assembly");
    Instance * const instance = Instance::create(0, part);
    Assembly * const top = Hierarchy::getTopAssembly();
    EXPECT_EQ(top->getId(), -1);
    EXPECT_STREQ(top->getName(), "_");
    EXPECT_FALSE(top->isSynthetic());
    EXPECT_EQ(top->getUnits()->getLengthType(), Units::Millimetre);
    EXPECT_EQ(top->getUnits()->getAngularType(), 2);
    EXPECT_EQ(tests::childrenOf(top), (tests::Nodes{part, assembly, instance}));
    EXPECT_EQ(Hierarchy::getTopAssembly(), top);
}

TEST_F(TopAssemblyTest, ItsNameIsMadeUniqueAsAnyOther)
{
    Part::create(0, "_");
    Part::create(0, "part");
    EXPECT_STREQ(Hierarchy::getTopAssembly()->getName(), "_@1");
}

TEST_F(TopAssemblyTest, AnAssemblyOfIdMinusOneThatIsThereTakesTheOthers)
{
    Part * const first = Part::create(0, "first");
    Part * const second = Part::create(0, "second");
    Assembly * const top = Hierarchy::getTopAssembly();
    Part * const third = Part::create(0, "third");
    EXPECT_EQ(Hierarchy::getTopAssembly(), top);
    EXPECT_EQ(tests::childrenOf(top), (tests::Nodes{first, second, third}));
    EXPECT_EQ(top->getParent(), nullptr);
}

TEST_F(TopAssemblyTest, AnAssemblyOfIdMinusOneBelowAnotherDoesNotTakeThatIn)
{
    Assembly * const top = Assembly::create(0, "top");
    Assembly * const between = Assembly::create(0, "between");
    Assembly * const made = Assembly::create(-1, "_");
    top->addChild(between);
    between->addChild(made);
    Part * const part = Part::create(0, "part");
    EXPECT_EQ(Hierarchy::getTopAssembly(), top);
    EXPECT_EQ(tests::childrenOf(made), tests::Nodes{part});
    EXPECT_EQ(Hierarchy::getTopAssembly(), top);
}

TEST_F(TopAssemblyTest, AnAssemblyOfIdMinusOneInARingTakesTheOthers)
{
    Assembly * const made = Assembly::create(-1, "_");
    Assembly * const other = Assembly::create(0, "other");
    made->addChild(other);
    other->addChild(made);
    Part * const part = Part::create(0, "part");
    EXPECT_EQ(Hierarchy::getTopAssembly(), made);
    EXPECT_EQ(tests::childrenOf(made), (tests::Nodes{other, part}));
}

TEST_F(TopAssemblyTest, IsNullWhenTheIdMinusOneIsAParts)
{
    Part * const part = Part::create(-1, "part");
    Part::create(0, "other");
    EXPECT_EQ(Hierarchy::getTopAssembly(), nullptr);
    EXPECT_EQ(part->getParent(), nullptr);
    EXPECT_EQ(tests::hierarchies().size(), 2U);
}

} // namespace
} // namespace transl_tk
