#include "support/slots.h"
#include "support/witnesses.h"
#include "unit/topology/topology_rules.h"

#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/uv_curve.h>
#include <keld-transl/topology/vertex.h>

#include <cstdint>

namespace transl_tk {
namespace {

class FinTest : public testing::Test
{
protected:
    UVCurve * trace(char const * name)
    {
        return UVCurve::create(0, new tests::ForeignUVCurve(m_Ends, name));
    }
    Edge * edge(int id, char const * name)
    {
        return Edge::create(id, Curve3D::create(0, new tests::ForeignCurve(m_Ends, name)), nullptr,
                            nullptr, true);
    }
    static EntityStore & edges() { return tests::currentSubPool().m_Edges; }
    static EntityTable & fins() { return tests::currentSubPool().m_Fins.m_Entities; }

    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
};

TEST_F(FinTest, KeepsWhatItWasMadeWithAndHasNoTraceAtFirst)
{
    Edge * const used = edge(0, "edge");
    Fin * const fin = Fin::create(0, used, true);
    EXPECT_EQ(fin->getEdge(), used);
    EXPECT_TRUE(fin->getSense());
    EXPECT_EQ(fin->getUVCurve(), nullptr);
    EXPECT_FALSE(Fin::create(0, used, false)->getSense());
}

TEST_F(FinTest, OfNoEdgeIsMadeAndFreed)
{
    Fin * const fin = Fin::create(0, nullptr, true);
    EXPECT_EQ(fin->getEdge(), nullptr);
    Fin::destruct(fin);
    EXPECT_TRUE(fins().empty());
    EXPECT_EQ(edges().m_Users.size(), 0U);
}

TEST_F(FinTest, FollowsTheRulesOfIds)
{
    tests::expectRulesOfIds<Fin>(&SubPool::m_Fins,
                                 [](int id) { return Fin::create(id, nullptr, true); });
}

TEST_F(FinTest, OfATakenIdUsesNothing)
{
    Fin::create(5, nullptr, true);
    EXPECT_EQ(Fin::create(5, edge(0, "edge"), true), nullptr);
    EXPECT_EQ(edges().m_Users.size(), 0U);
    EXPECT_TRUE(m_Ends.empty());
}

TEST_F(FinTest, FreesItsTraceThenItsEdgeAndThenLeavesItsStore)
{
    std::size_t finsLeft = 0;
    tests::Ends endsBefore;
    auto * const look = new tests::WitnessCurve([&] {
        finsLeft = fins().size();
        endsBefore = m_Ends;
    });
    Fin * const fin =
        Fin::create(0, Edge::create(0, Curve3D::create(0, look), nullptr, nullptr, true), true);
    fin->setUVCurve(trace("trace"));
    Fin::destruct(fin);
    EXPECT_EQ(endsBefore, (tests::Ends{"trace"}));
    EXPECT_EQ(finsLeft, 1U);
    EXPECT_TRUE(fins().empty());
    EXPECT_TRUE(edges().m_Entities.empty());
}

TEST_F(FinTest, LeavesATraceThatIsReplaced)
{
    Fin * const fin = Fin::create(0, nullptr, true);
    UVCurve * const second = trace("second");
    fin->setUVCurve(trace("first"));
    fin->setUVCurve(second);
    EXPECT_EQ(fin->getUVCurve(), second);
    Fin::destruct(fin);
    EXPECT_EQ(m_Ends, (tests::Ends{"second"}));
    EXPECT_EQ(tests::currentSubPool().m_UVCurves.m_Entities.size(), 1U);
}

TEST_F(FinTest, MayLoseItsTraceAgain)
{
    Fin * const fin = Fin::create(0, nullptr, true);
    fin->setUVCurve(trace("trace"));
    fin->setUVCurve(nullptr);
    EXPECT_EQ(fin->getUVCurve(), nullptr);
    Fin::destruct(fin);
    EXPECT_TRUE(m_Ends.empty());
}

TEST_F(FinTest, SharesItsEdgeUntilTheLastFinGoes)
{
    Edge * const shared = edge(0, "shared");
    Fin * const first = Fin::create(0, shared, true);
    Fin * const second = Fin::create(0, shared, false);
    Fin::destruct(first);
    EXPECT_EQ(edges().m_Entities.lookup(1), shared);
    EXPECT_TRUE(m_Ends.empty());
    Fin::destruct(second);
    EXPECT_EQ(m_Ends, (tests::Ends{"shared"}));
    EXPECT_TRUE(edges().m_Entities.empty());
    EXPECT_EQ(edges().m_Users.size(), 1U);
}

TEST_F(FinTest, LastOfItsEdgeFreesWhatOnlyThatEdgeUses)
{
    Vertex * const kept = Vertex::create(0, new tests::ForeignPoint(m_Ends, "kept"));
    Edge::create(0, nullptr, kept, nullptr, true);
    Vertex * const start = Vertex::create(0, new tests::ForeignPoint(m_Ends, "start"));
    Curve3D * const curve = Curve3D::create(0, new tests::ForeignCurve(m_Ends, "curve"));
    Fin::destruct(Fin::create(0, Edge::create(0, curve, start, kept, true), true));
    EXPECT_EQ(m_Ends, (tests::Ends{"curve", "start"}));
}

TEST_F(FinTest, DoesNotTouchAnEdgeThatSomebodyDestroyedBefore)
{
    Edge * const used = edge(0, "edge");
    Fin * const fin = Fin::create(0, used, true);
    Edge::destruct(used);
    EXPECT_EQ(m_Ends, (tests::Ends{"edge"}));
    EXPECT_EQ(fin->getEdge(), used);
    Fin::destruct(fin);
    EXPECT_EQ(m_Ends, (tests::Ends{"edge"}));
    EXPECT_TRUE(fins().empty());
}

TEST_F(FinTest, IsNoUserOfAnEdgeThatTookIdAndPlaceOfTheDestroyedOne)
{
    Edge * const used = edge(5, "old");
    auto const place = reinterpret_cast<std::uintptr_t>(used);
    Fin * const first = Fin::create(0, used, true);
    Fin * const second = Fin::create(0, used, true);
    Edge::destruct(used);
    Edge * const successor = edge(5, "new");
    tests::expectPlace(successor, place);
    Fin::destruct(first);
    EXPECT_EQ(edges().m_Entities.lookup(5), successor);
    Fin::destruct(Fin::create(0, successor, true));
    EXPECT_EQ(m_Ends, (tests::Ends{"old", "new"}));
    Fin::destruct(second);
}

TEST_F(FinTest, DestroyedUnderAnotherSubPoolLeavesItsEdgeAlone)
{
    Edge * const used = edge(5, "edge");
    Fin * const fin = Fin::create(7, used, true);
    SubPool & own = tests::currentSubPool();
    Pool::construct("other");
    edge(5, "other edge");
    Fin::destruct(fin);
    EXPECT_TRUE(m_Ends.empty());
    EXPECT_TRUE(own.m_Fins.m_Entities.empty());
    EXPECT_EQ(own.m_Edges.m_Entities.lookup(5), used);
    EXPECT_EQ(edges().m_Entities.size(), 1U);
}

TEST_F(FinTest, HasTheForeignSystemsHandle)
{
    tests::expectOriginalId(Fin::create(3, nullptr, true));
}

TEST_F(FinTest, IsOfKindSix)
{
    EXPECT_EQ(Fin::create(0, nullptr, true)->getEntityKind(), 6);
}

TEST_F(FinTest, TableHoldsKindThenEdgeThenSenseThenTrace)
{
    EXPECT_EQ(tests::slotOf(&Fin::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&Fin::getEdge), 3U);
    EXPECT_EQ(tests::slotOf(&Fin::getSense), 4U);
    EXPECT_EQ(tests::slotOf(&Fin::setUVCurve), 5U);
    EXPECT_EQ(tests::slotOf(&Fin::getUVCurve), 6U);
}

} // namespace
} // namespace transl_tk
