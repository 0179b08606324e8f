#include "support/slots.h"
#include "support/witnesses.h"
#include "unit/topology/topology_rules.h"

#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/surface.h>

namespace transl_tk {
namespace {

class ShellTest : public testing::Test
{
protected:
    /// A face whose end shows.
    Face * face(char const * name)
    {
        return Face::create(0, Surface::create(0, new tests::ForeignSurface(m_Ends, name)));
    }
    static SubPool & model() { return tests::currentSubPool(); }

    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
};

TEST_F(ShellTest, IsNewWithoutFlagAndFaces)
{
    Shell * const shell = Shell::create(0);
    EXPECT_FALSE(shell->getShellFlag());
    EXPECT_TRUE(tests::childrenOf(shell, &Shell::forEachFace).empty());
    Shell::destruct(shell);
    EXPECT_TRUE(model().m_Shells.m_Entities.empty());
}

TEST_F(ShellTest, KeepsItsFlag)
{
    Shell * const shell = Shell::create(0);
    shell->setShellFlag(true);
    EXPECT_TRUE(shell->getShellFlag());
    shell->setShellFlag(false);
    EXPECT_FALSE(shell->getShellFlag());
}

TEST_F(ShellTest, KeepsItsFacesInOrderAndWalksThemUntilTheFirstFalse)
{
    tests::expectList(Shell::create(0), &Shell::addFace, &Shell::forEachFace,
                      {face("c"), face("a"), nullptr, face("d"), face("b")});
}

TEST_F(ShellTest, FreesItsFacesInOrderThenLeavesItsStore)
{
    std::size_t shellsLeft = 0;
    auto * const look =
        new tests::WitnessCurve([&] { shellsLeft = model().m_Shells.m_Entities.size(); });
    Loop * const loop = Loop::create(0);
    loop->addFin(
        Fin::create(0, Edge::create(0, Curve3D::create(0, look), nullptr, nullptr, true), true));
    Face * const last = face("last");
    last->addLoop(loop);
    Shell * const shell = Shell::create(0);
    shell->addFace(face("first"));
    shell->addFace(nullptr);
    shell->addFace(face("second"));
    shell->addFace(last);
    Shell::destruct(shell);
    EXPECT_EQ(m_Ends, (tests::Ends{"first", "second", "last"}));
    EXPECT_EQ(shellsLeft, 1U);
    EXPECT_TRUE(model().m_Shells.m_Entities.empty());
    EXPECT_TRUE(model().m_Faces.m_Entities.empty());
}

TEST_F(ShellTest, FollowsTheRulesOfIds)
{
    tests::expectRulesOfIds<Shell>(&SubPool::m_Shells, [](int id) { return Shell::create(id); });
}

TEST_F(ShellTest, IsOfKindEleven)
{
    EXPECT_EQ(Shell::create(0)->getEntityKind(), 11);
}

TEST_F(ShellTest, TableHoldsKindThenAddingThenFlagThenWalking)
{
    EXPECT_EQ(tests::slotOf(&Shell::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&Shell::addFace), 3U);
    EXPECT_EQ(tests::slotOf(&Shell::getShellFlag), 4U);
    EXPECT_EQ(tests::slotOf(&Shell::setShellFlag), 5U);
    EXPECT_EQ(tests::slotOf(&Shell::forEachFace), 6U);
    EXPECT_FALSE(tests::HasOriginalId<Shell>);
}

} // namespace
} // namespace transl_tk
