#include "support/slots.h"
#include "support/witnesses.h"
#include "unit/topology/topology_rules.h"

#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/vertex.h>

#include <limits>

namespace transl_tk {
namespace {

class VertexTest : public testing::Test
{
protected:
    tests::ForeignPoint * point(char const * name) { return new tests::ForeignPoint(m_Ends, name); }
    static EntityTable const & table() { return tests::currentSubPool().m_Vertices.m_Entities; }

    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
};

TEST_F(VertexTest, InSpaceGivesItsPointAndZero)
{
    geom::Point * const given = point("point");
    Vertex * const vertex = Vertex::create(0, given);
    geom::Point * got = nullptr;
    double parameter = 7;
    vertex->getGeometry(got, parameter);
    EXPECT_EQ(got, given);
    EXPECT_EQ(tests::bitsOf(std::vector{parameter}), tests::bitsOf(std::vector{0.0}));
}

TEST_F(VertexTest, OnACurveGivesNullAndItsParameterBitForBit)
{
    for (double const given :
         {0.25, tests::NegativeZero, tests::OddNan, std::numeric_limits<double>::infinity()}) {
        Vertex * const vertex = Vertex::create(0, given);
        geom::Point * got = point("not looked at");
        auto const keep = tests::owned(got);
        double parameter = 7;
        vertex->getGeometry(got, parameter);
        EXPECT_EQ(got, nullptr);
        EXPECT_EQ(tests::bitsOf(std::vector{parameter}), tests::bitsOf(std::vector{given}));
    }
}

TEST_F(VertexTest, IsNotMadeOfANullPointAndTakesNoId)
{
    EXPECT_EQ(Vertex::create(3, nullptr), nullptr);
    EXPECT_EQ(Vertex::create(0, static_cast<geom::Point *>(nullptr)), nullptr);
    EXPECT_TRUE(table().empty());
}

TEST_F(VertexTest, OwnsItsPoint)
{
    Vertex * const vertex = Vertex::create(0, point("point"));
    EXPECT_TRUE(m_Ends.empty());
    Vertex::destruct(vertex);
    EXPECT_EQ(m_Ends, (tests::Ends{"point"}));
}

TEST_F(VertexTest, LeavesThePointToTheCallerWhenItsIdIsTaken)
{
    Vertex::create(5, 0.5);
    auto const refused = tests::owned<geom::Point>(point("refused"));
    EXPECT_EQ(Vertex::create(5, refused.get()), nullptr);
    EXPECT_TRUE(m_Ends.empty());
}

TEST_F(VertexTest, FollowsTheRulesOfIdsInSpace)
{
    tests::expectRulesOfIds<Vertex>(&SubPool::m_Vertices, [&](int id) {
        auto point = tests::owned<geom::Point>(geom::Point::create(1, 2, 3));
        Vertex * const vertex = Vertex::create(id, point.get());
        if (vertex != nullptr)
            static_cast<void>(point.release());
        return vertex;
    });
}

TEST_F(VertexTest, FollowsTheRulesOfIdsOnACurve)
{
    tests::expectRulesOfIds<Vertex>(&SubPool::m_Vertices,
                                    [](int id) { return Vertex::create(id, 0.5); });
}

TEST_F(VertexTest, BothFormsShareOneRangeOfIds)
{
    EXPECT_NE(Vertex::create(5, 0.5), nullptr);
    EXPECT_EQ(Vertex::create(0, point("point"))->getId(), 6);
    EXPECT_EQ(Vertex::create(6, 0.5), nullptr);
}

TEST_F(VertexTest, IsOfKindFourteenInBothForms)
{
    EXPECT_EQ(Vertex::create(0, 0.5)->getEntityKind(), 14);
    EXPECT_EQ(Vertex::create(0, point("point"))->getEntityKind(), 14);
}

TEST_F(VertexTest, EndsWithoutALookAtItsUsers)
{
    Vertex * const vertex = Vertex::create(5, point("point"));
    Edge * const edge = Edge::create(0, nullptr, vertex, vertex, true);
    Vertex::destruct(vertex);
    EXPECT_EQ(m_Ends, (tests::Ends{"point"}));
    EXPECT_EQ(edge->getStartVertex(), vertex);
    EXPECT_EQ(edge->getEndVertex(), vertex);
    EXPECT_EQ(tests::currentSubPool().m_Edges.m_Entities.lookup(1), edge);
}

TEST_F(VertexTest, TableHoldsKindThenGeometry)
{
    EXPECT_EQ(tests::slotOf(&Vertex::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&Vertex::getGeometry), 3U);
    EXPECT_FALSE(tests::HasOriginalId<Vertex>);
}

} // namespace
} // namespace transl_tk
