#include "support/slots.h"
#include "support/witnesses.h"
#include "unit/topology/topology_rules.h"

#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/vertex.h>

#include <cstdint>

namespace transl_tk {
namespace {

class EdgeTest : public testing::Test
{
protected:
    Curve3D * curve(int id, char const * name)
    {
        return Curve3D::create(id, new tests::ForeignCurve(m_Ends, name));
    }
    Vertex * vertex(int id, char const * name)
    {
        return Vertex::create(id, new tests::ForeignPoint(m_Ends, name));
    }
    static EntityStore & curves() { return tests::currentSubPool().m_Curves3D; }
    static EntityStore & vertices() { return tests::currentSubPool().m_Vertices; }
    static EntityStore & edges() { return tests::currentSubPool().m_Edges; }

    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
};

TEST_F(EdgeTest, KeepsWhatItWasMadeWith)
{
    Curve3D * const line = curve(0, "curve");
    Vertex * const start = vertex(0, "start");
    Vertex * const end = vertex(0, "end");
    Edge * const edge = Edge::create(0, line, start, end, true);
    EXPECT_EQ(edge->getCurve(), line);
    EXPECT_EQ(edge->getStartVertex(), start);
    EXPECT_EQ(edge->getEndVertex(), end);
    EXPECT_TRUE(edge->getSense());
    EXPECT_FALSE(Edge::create(0, line, start, end, false)->getSense());
}

TEST_F(EdgeTest, OfNothingIsMadeAndFreed)
{
    Edge * const edge = Edge::create(0, nullptr, nullptr, nullptr, false);
    EXPECT_EQ(edge->getCurve(), nullptr);
    EXPECT_EQ(edge->getStartVertex(), nullptr);
    EXPECT_EQ(edge->getEndVertex(), nullptr);
    Edge::destruct(edge);
    EXPECT_TRUE(edges().m_Entities.empty());
    EXPECT_EQ(curves().m_Users.size(), 0U);
    EXPECT_EQ(vertices().m_Users.size(), 0U);
}

TEST_F(EdgeTest, FreesItsCurveThenItsStartThenItsEnd)
{
    Edge::destruct(Edge::create(0, curve(0, "curve"), vertex(2, "start"), vertex(1, "end"), true));
    EXPECT_EQ(m_Ends, (tests::Ends{"curve", "start", "end"}));
    EXPECT_TRUE(curves().m_Entities.empty());
    EXPECT_TRUE(vertices().m_Entities.empty());
}

TEST_F(EdgeTest, LeavesItsStoreAfterItHasFreedWhatItUsed)
{
    int edgesLeft = -1;
    auto * const look =
        new tests::WitnessCurve([&] { edgesLeft = static_cast<int>(edges().m_Entities.size()); });
    Edge::destruct(Edge::create(0, Curve3D::create(0, look), nullptr, nullptr, true));
    EXPECT_EQ(edgesLeft, 1);
    EXPECT_TRUE(edges().m_Entities.empty());
}

TEST_F(EdgeTest, FollowsTheRulesOfIds)
{
    tests::expectRulesOfIds<Edge>(&SubPool::m_Edges, [](int id) {
        return Edge::create(id, nullptr, nullptr, nullptr, true);
    });
}

TEST_F(EdgeTest, OfATakenIdUsesNothing)
{
    Curve3D * const line = curve(0, "curve");
    Vertex * const end = vertex(0, "vertex");
    Edge::create(5, nullptr, nullptr, nullptr, true);
    EXPECT_EQ(Edge::create(5, line, end, nullptr, true), nullptr);
    EXPECT_EQ(curves().m_Users.size(), 0U);
    EXPECT_EQ(vertices().m_Users.size(), 0U);
    EXPECT_TRUE(m_Ends.empty());
}

TEST_F(EdgeTest, SharesItsCurveUntilTheLastEdgeGoes)
{
    Curve3D * const shared = curve(0, "shared");
    Edge * const first = Edge::create(0, shared, nullptr, nullptr, true);
    Edge * const second = Edge::create(0, shared, nullptr, nullptr, false);
    Edge::destruct(first);
    EXPECT_EQ(curves().m_Entities.lookup(1), shared);
    Edge::destruct(second);
    EXPECT_EQ(m_Ends, (tests::Ends{"shared"}));
    EXPECT_TRUE(curves().m_Entities.empty());
}

TEST_F(EdgeTest, SharesItsVerticesUntilTheLastEdgeGoes)
{
    Vertex * const shared = vertex(0, "shared");
    Edge * const into = Edge::create(0, nullptr, vertex(0, "before"), shared, true);
    Edge * const outOf = Edge::create(0, nullptr, shared, vertex(0, "behind"), true);
    Edge::destruct(into);
    EXPECT_EQ(m_Ends, (tests::Ends{"before"}));
    Edge::destruct(outOf);
    EXPECT_EQ(m_Ends, (tests::Ends{"before", "shared", "behind"}));
}

TEST_F(EdgeTest, ThatIsClosedFreesItsVertexOnce)
{
    Vertex * const only = vertex(0, "only");
    Edge * const closed = Edge::create(0, nullptr, only, only, true);
    Edge::destruct(closed);
    EXPECT_EQ(m_Ends, (tests::Ends{"only"}));
    EXPECT_EQ(vertices().m_Users.size(), 1U);
}

TEST_F(EdgeTest, ThatIsClosedIsOneUserOfItsVertex)
{
    Vertex * const only = vertex(0, "only");
    Edge * const closed = Edge::create(0, nullptr, only, only, true);
    Edge * const other = Edge::create(0, nullptr, nullptr, only, true);
    Edge::destruct(closed);
    EXPECT_TRUE(m_Ends.empty());
    Edge::destruct(other);
    EXPECT_EQ(m_Ends, (tests::Ends{"only"}));
}

TEST_F(EdgeTest, WithAnotherCurveLeavesTheOldOneInTheStore)
{
    Curve3D * const before = curve(0, "before");
    Curve3D * const behind = curve(0, "behind");
    Edge * const edge = Edge::create(0, before, nullptr, nullptr, true);
    edge->setCurve(behind);
    EXPECT_EQ(edge->getCurve(), behind);
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"behind"}));
    EXPECT_EQ(curves().m_Entities.lookup(1), before);
    tests::currentSubPool().clear();
    EXPECT_EQ(m_Ends, (tests::Ends{"behind", "before"}));
}

TEST_F(EdgeTest, WithAnotherCurveIsNoUserOfTheOldOneAnyMore)
{
    Curve3D * const before = curve(0, "before");
    Edge * const turned = Edge::create(0, before, nullptr, nullptr, true);
    Edge * const stays = Edge::create(0, before, nullptr, nullptr, true);
    turned->setCurve(nullptr);
    EXPECT_EQ(turned->getCurve(), nullptr);
    Edge::destruct(stays);
    EXPECT_EQ(m_Ends, (tests::Ends{"before"}));
    Edge::destruct(turned);
}

TEST_F(EdgeTest, FreesANewCurveOnlyWhenNoOtherEdgeUsesIt)
{
    Curve3D * const shared = curve(0, "shared");
    Edge * const other = Edge::create(0, shared, nullptr, nullptr, true);
    Edge * const edge = Edge::create(0, nullptr, nullptr, nullptr, true);
    edge->setCurve(shared);
    Edge::destruct(edge);
    EXPECT_TRUE(m_Ends.empty());
    Edge::destruct(other);
    EXPECT_EQ(m_Ends, (tests::Ends{"shared"}));
}

TEST_F(EdgeTest, SetToItsOwnCurveAndVerticesStaysTheirUser)
{
    Curve3D * const line = curve(0, "curve");
    Vertex * const start = vertex(0, "start");
    Vertex * const end = vertex(0, "end");
    Edge * const edge = Edge::create(0, line, start, end, true);
    edge->setCurve(line);
    edge->setStartVertex(start);
    edge->setEndVertex(end);
    Edge * const other = Edge::create(0, line, start, end, true);
    Edge::destruct(other);
    EXPECT_TRUE(m_Ends.empty());
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"curve", "start", "end"}));
}

TEST_F(EdgeTest, WithOtherVerticesLeavesTheOldOnesInTheStore)
{
    Edge * const edge =
        Edge::create(0, nullptr, vertex(1, "old start"), vertex(2, "old end"), true);
    Vertex * const start = vertex(3, "new start");
    Vertex * const end = vertex(4, "new end");
    edge->setStartVertex(start);
    EXPECT_EQ(edge->getStartVertex(), start);
    EXPECT_NE(edge->getEndVertex(), end);
    edge->setEndVertex(end);
    EXPECT_EQ(edge->getStartVertex(), start);
    EXPECT_EQ(edge->getEndVertex(), end);
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"new start", "new end"}));
    EXPECT_EQ(vertices().m_Entities.size(), 2U);
}

TEST_F(EdgeTest, ThatIsClosedByASetterFreesItsVertexOnce)
{
    Vertex * const start = vertex(0, "start");
    Edge * const edge = Edge::create(0, nullptr, start, nullptr, true);
    edge->setEndVertex(start);
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"start"}));
}

TEST_F(EdgeTest, OpenedAtItsStartStillFreesTheVertexThatOnlyItsEndHolds)
{
    Vertex * const only = vertex(0, "only");
    Edge * const edge = Edge::create(0, nullptr, only, only, true);
    edge->setStartVertex(vertex(0, "new start"));
    EXPECT_EQ(edge->getEndVertex(), only);
    EXPECT_TRUE(m_Ends.empty());
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"new start", "only"}));
}

TEST_F(EdgeTest, OpenedAtItsEndStillFreesTheVertexThatOnlyItsStartHolds)
{
    Vertex * const only = vertex(0, "only");
    Edge * const edge = Edge::create(0, nullptr, only, only, true);
    edge->setEndVertex(nullptr);
    EXPECT_EQ(edge->getStartVertex(), only);
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"only"}));
}

TEST_F(EdgeTest, OpenedAtItsStartLeavesTheVertexOfItsEndToOtherUsers)
{
    Vertex * const only = vertex(0, "only");
    Edge * const edge = Edge::create(0, nullptr, only, only, true);
    Edge * const other = Edge::create(0, nullptr, only, nullptr, true);
    edge->setStartVertex(nullptr);
    Edge::destruct(edge);
    EXPECT_TRUE(m_Ends.empty());
    Edge::destruct(other);
    EXPECT_EQ(m_Ends, (tests::Ends{"only"}));
}

TEST_F(EdgeTest, OpenedAtItsStartDoesNotKeepTheVertexOfItsEnd)
{
    Vertex * const only = vertex(0, "only");
    Edge * const edge = Edge::create(0, nullptr, only, only, true);
    Edge * const other = Edge::create(0, nullptr, only, nullptr, true);
    edge->setStartVertex(nullptr);
    Edge::destruct(other);
    EXPECT_EQ(m_Ends, (tests::Ends{"only"}));
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"only"}));
}

TEST_F(EdgeTest, DoesNotTouchWhatSomebodyDestroyedBefore)
{
    Curve3D * const line = curve(0, "curve");
    Vertex * const start = vertex(0, "start");
    Vertex * const end = vertex(0, "end");
    Edge * const edge = Edge::create(0, line, start, end, true);
    Vertex::destruct(end);
    Curve3D::destruct(line);
    Vertex::destruct(start);
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"end", "curve", "start"}));
}

TEST_F(EdgeTest, IsTurnedAwayFromWhatSomebodyDestroyedBefore)
{
    Curve3D * const line = curve(0, "curve");
    Vertex * const only = vertex(0, "only");
    Edge * const edge = Edge::create(0, line, only, only, true);
    Curve3D::destruct(line);
    Vertex::destruct(only);
    edge->setCurve(curve(0, "new curve"));
    edge->setStartVertex(vertex(0, "new start"));
    edge->setEndVertex(vertex(0, "new end"));
    m_Ends.clear();
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"new curve", "new start", "new end"}));
}

TEST_F(EdgeTest, IsNoUserOfACarrierThatTookIdAndPlaceOfTheDestroyedOne)
{
    Curve3D * const line = curve(5, "old curve");
    Vertex * const only = vertex(5, "old vertex");
    auto const curvePlace = reinterpret_cast<std::uintptr_t>(line);
    auto const vertexPlace = reinterpret_cast<std::uintptr_t>(only);
    Edge * const old = Edge::create(0, line, only, only, true);
    Curve3D::destruct(line);
    Vertex::destruct(only);
    m_Ends.clear();
    Curve3D * const newLine = curve(5, "new curve");
    Vertex * const newVertex = vertex(5, "new vertex");
    tests::expectPlace(newLine, curvePlace);
    tests::expectPlace(newVertex, vertexPlace);
    Edge::destruct(old);
    EXPECT_TRUE(m_Ends.empty());
    EXPECT_EQ(curves().m_Entities.lookup(5), newLine);
    EXPECT_EQ(vertices().m_Entities.lookup(5), newVertex);
}

TEST_F(EdgeTest, DoesNotKeepACarrierThatTookIdAndPlaceOfTheDestroyedOne)
{
    Curve3D * const line = curve(5, "old curve");
    Edge * const old = Edge::create(0, line, nullptr, nullptr, true);
    Curve3D::destruct(line);
    Edge * const user = Edge::create(0, curve(5, "new curve"), nullptr, nullptr, true);
    Edge::destruct(user);
    EXPECT_EQ(m_Ends, (tests::Ends{"old curve", "new curve"}));
    Edge::destruct(old);
}

TEST_F(EdgeTest, TurnedAwayFromADestroyedCarrierStaysUserOfItsSuccessor)
{
    Vertex * const only = vertex(5, "old");
    Edge * const edge = Edge::create(0, nullptr, only, nullptr, true);
    Vertex::destruct(only);
    edge->setEndVertex(vertex(5, "new"));
    edge->setStartVertex(nullptr);
    Edge * const other = Edge::create(0, nullptr, edge->getEndVertex(), nullptr, true);
    Edge::destruct(other);
    EXPECT_EQ(m_Ends, (tests::Ends{"old"}));
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"old", "new"}));
}

TEST_F(EdgeTest, FreesTheSuccessorAtItsEndAlsoWhenItStartsAtTheDestroyedOne)
{
    Vertex * const only = vertex(5, "old");
    auto const place = reinterpret_cast<std::uintptr_t>(only);
    Edge * const edge = Edge::create(0, nullptr, only, nullptr, true);
    Vertex::destruct(only);
    edge->setEndVertex(vertex(5, "new"));
    tests::expectPlace(edge->getEndVertex(), place);
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"old", "new"}));
}

TEST_F(EdgeTest, LeavesTheEntryOfItsCarriersUsers)
{
    Vertex * const only = vertex(0, "vertex");
    Edge::destruct(Edge::create(0, curve(0, "curve"), only, only, true));
    EXPECT_EQ(curves().m_Users.size(), 1U);
    EXPECT_EQ(vertices().m_Users.size(), 1U);
    EXPECT_EQ(edges().m_Users.size(), 0U);
}

TEST_F(EdgeTest, DestroyedUnderAnotherSubPoolLeavesItsCarriersAlone)
{
    Vertex * const only = vertex(5, "vertex");
    Curve3D * const line = curve(5, "curve");
    Edge * const edge = Edge::create(7, line, only, only, true);
    SubPool & own = tests::currentSubPool();
    Pool::construct("other");
    curve(5, "other curve");
    vertex(5, "other vertex");
    Edge::destruct(edge);
    EXPECT_TRUE(m_Ends.empty());
    EXPECT_TRUE(own.m_Edges.m_Entities.empty());
    EXPECT_EQ(own.m_Curves3D.m_Entities.lookup(5), line);
    EXPECT_EQ(own.m_Vertices.m_Entities.lookup(5), only);
    EXPECT_EQ(curves().m_Entities.size(), 1U);
    Pool::getInstance()->setCurrent("test");
    tests::currentSubPool().clear();
    EXPECT_EQ(m_Ends, (tests::Ends{"vertex", "curve"}));
}

TEST_F(EdgeTest, FreesACarrierThatNeverHeardOfIt)
{
    Curve3D * const line = curve(5, "curve");
    Pool::construct("other");
    Edge * const edge = Edge::create(0, line, nullptr, nullptr, true);
    Pool::getInstance()->setCurrent("test");
    EXPECT_EQ(curves().m_Users.size(), 0U);
    Edge::destruct(edge);
    EXPECT_EQ(m_Ends, (tests::Ends{"curve"}));
    EXPECT_TRUE(curves().m_Entities.empty());
}

TEST_F(EdgeTest, WithoutFinsLivesUntilSomebodyDestroysIt)
{
    Edge::create(0, curve(0, "curve"), nullptr, nullptr, true);
    EXPECT_EQ(edges().m_Entities.size(), 1U);
    tests::currentSubPool().clear();
    EXPECT_EQ(m_Ends, (tests::Ends{"curve"}));
    EXPECT_TRUE(edges().m_Entities.empty());
}

TEST_F(EdgeTest, HasTheForeignSystemsHandle)
{
    tests::expectOriginalId(Edge::create(3, nullptr, nullptr, nullptr, true));
}

TEST_F(EdgeTest, IsOfKindFour)
{
    EXPECT_EQ(Edge::create(0, nullptr, nullptr, nullptr, true)->getEntityKind(), 4);
}

TEST_F(EdgeTest, TableHoldsKindThenCurveStartAndEndWithTheirSettersThenSense)
{
    EXPECT_EQ(tests::slotOf(&Edge::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&Edge::getCurve), 3U);
    EXPECT_EQ(tests::slotOf(&Edge::setCurve), 4U);
    EXPECT_EQ(tests::slotOf(&Edge::getStartVertex), 5U);
    EXPECT_EQ(tests::slotOf(&Edge::setStartVertex), 6U);
    EXPECT_EQ(tests::slotOf(&Edge::getEndVertex), 7U);
    EXPECT_EQ(tests::slotOf(&Edge::setEndVertex), 8U);
    EXPECT_EQ(tests::slotOf(&Edge::getSense), 9U);
}

} // namespace
} // namespace transl_tk
