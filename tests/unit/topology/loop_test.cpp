#include "support/slots.h"
#include "support/witnesses.h"
#include "unit/topology/topology_rules.h"

#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/uv_curve.h>

namespace transl_tk {
namespace {

class LoopTest : public testing::Test
{
protected:
    /// A fin whose end shows.
    Fin * fin(char const * name)
    {
        Fin * const made = Fin::create(0, nullptr, true);
        made->setUVCurve(UVCurve::create(0, new tests::ForeignUVCurve(m_Ends, name)));
        return made;
    }
    static SubPool & model() { return tests::currentSubPool(); }

    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
};

TEST_F(LoopTest, KeepsItsFinsInOrderAndWalksThemUntilTheFirstFalse)
{
    tests::expectList(Loop::create(0), &Loop::addFin, &Loop::forEachFin,
                      {fin("c"), fin("a"), nullptr, fin("b"), fin("e"), fin("d")});
}

TEST_F(LoopTest, FreesItsFinsInOrderThenLeavesItsStore)
{
    std::size_t loopsLeft = 0;
    auto * const look =
        new tests::WitnessCurve([&] { loopsLeft = model().m_Loops.m_Entities.size(); });
    Edge * const edge = Edge::create(0, Curve3D::create(0, look), nullptr, nullptr, true);
    Loop * const loop = Loop::create(0);
    Fin * const last = fin("last");
    loop->addFin(fin("first"));
    loop->addFin(nullptr);
    loop->addFin(fin("second"));
    loop->addFin(Fin::create(0, edge, true));
    loop->addFin(fin("third"));
    loop->addFin(last);
    Loop::destruct(loop);
    EXPECT_EQ(m_Ends, (tests::Ends{"first", "second", "third", "last"}));
    EXPECT_EQ(loopsLeft, 1U);
    EXPECT_TRUE(model().m_Loops.m_Entities.empty());
    EXPECT_TRUE(model().m_Fins.m_Entities.empty());
}

TEST_F(LoopTest, WithBothFinsOfAnEdgeFreesTheEdgeOnce)
{
    Edge * const edge = Edge::create(0, Curve3D::create(0, new tests::ForeignCurve(m_Ends, "seam")),
                                     nullptr, nullptr, true);
    Loop * const loop = Loop::create(0);
    loop->addFin(Fin::create(0, edge, true));
    loop->addFin(Fin::create(0, edge, false));
    Loop::destruct(loop);
    EXPECT_EQ(m_Ends, (tests::Ends{"seam"}));
}

TEST_F(LoopTest, FollowsTheRulesOfIds)
{
    tests::expectRulesOfIds<Loop>(&SubPool::m_Loops, [](int id) { return Loop::create(id); });
}

TEST_F(LoopTest, IsOfKindEight)
{
    EXPECT_EQ(Loop::create(0)->getEntityKind(), 8);
}

TEST_F(LoopTest, TableHoldsKindThenAddingThenWalking)
{
    EXPECT_EQ(tests::slotOf(&Loop::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&Loop::addFin), 3U);
    EXPECT_EQ(tests::slotOf(&Loop::forEachFin), 4U);
    EXPECT_FALSE(tests::HasOriginalId<Loop>);
}

} // namespace
} // namespace transl_tk
