#include "support/slots.h"
#include "support/witnesses.h"
#include "unit/topology/topology_rules.h"

#include <keld-transl/topology/body.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/tri_strip.h>
#include <keld-transl/topology/vertex.h>

namespace transl_tk {
namespace {

class BodyTest : public testing::Test
{
protected:
    /// A shell whose end shows.
    Shell * shell(char const * name)
    {
        Shell * const made = Shell::create(0);
        made->addFace(Face::create(0, Surface::create(0, new tests::ForeignSurface(m_Ends, name))));
        return made;
    }
    static TriStrip * strip()
    {
        float const vertices[9] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
        return TriStrip::create(0, vertices, nullptr, 3, nullptr, 0, nullptr, 0, false);
    }
    static SubPool & model() { return tests::currentSubPool(); }

    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
};

TEST_F(BodyTest, CopiesItsName)
{
    char text[] = "a name that is too long to stand in the object itself";
    Body * const body = Body::create(0, text);
    text[0] = 'b';
    EXPECT_STREQ(body->getName(), "a name that is too long to stand in the object itself");
    text[0] = 'c';
    body->setName(text);
    text[0] = 'd';
    EXPECT_STREQ(body->getName(), "c name that is too long to stand in the object itself");
    body->setName(body->getName() + 2);
    EXPECT_STREQ(body->getName(), "name that is too long to stand in the object itself");
}

TEST_F(BodyTest, TakesNullForAnEmptyName)
{
    Body * const body = Body::create(0, nullptr);
    EXPECT_STREQ(body->getName(), "");
    body->setName("name");
    body->setName(nullptr);
    EXPECT_STREQ(body->getName(), "");
}

TEST_F(BodyTest, MayHaveTheNameOfAnotherWhichEntersNoList)
{
    EXPECT_STREQ(Body::create(0, "same")->getName(), "same");
    EXPECT_STREQ(Body::create(0, "same")->getName(), "same");
    std::string name = "same";
    Pool::getInstance()->uniqueName(name);
    EXPECT_EQ(name, "same");
}

TEST_F(BodyTest, IsNewWithoutShellsAndStrips)
{
    Body * const body = Body::create(0, "body");
    EXPECT_TRUE(tests::childrenOf(body, &Body::forEachShell).empty());
    EXPECT_TRUE(tests::childrenOf(body, &Body::forEachTriStrip).empty());
    Body::destruct(body);
    EXPECT_TRUE(model().m_Bodies.m_Entities.empty());
}

TEST_F(BodyTest, KeepsItsShellsInOrderAndWalksThemUntilTheFirstFalse)
{
    tests::expectList(Body::create(0, "body"), &Body::addShell, &Body::forEachShell,
                      {shell("b"), nullptr, shell("a"), shell("c")});
}

TEST_F(BodyTest, KeepsItsStripsInOrderAndWalksThemUntilTheFirstFalse)
{
    TriStrip * const last = strip();
    tests::expectList(Body::create(0, "body"), &Body::addTriStrip, &Body::forEachTriStrip,
                      {strip(), nullptr, strip(), last});
}

TEST_F(BodyTest, KeepsShellsAndStripsApart)
{
    Body * const body = Body::create(0, "body");
    Shell * const exact = shell("shell");
    TriStrip * const facets = strip();
    body->addShell(exact);
    body->addTriStrip(facets);
    EXPECT_EQ(tests::childrenOf(body, &Body::forEachShell), std::vector<Shell *>{exact});
    EXPECT_EQ(tests::childrenOf(body, &Body::forEachTriStrip), std::vector<TriStrip *>{facets});
}

TEST_F(BodyTest, OfFacetsAloneIsMadeAndFreed)
{
    Body * const body = Body::create(0, "facets");
    body->addTriStrip(strip());
    body->addTriStrip(strip());
    Body::destruct(body);
    EXPECT_TRUE(model().m_TriStrips.m_Entities.empty());
    EXPECT_TRUE(model().m_Bodies.m_Entities.empty());
}

TEST_F(BodyTest, FreesItsShellsInOrderThenItsStripsThenLeavesItsStore)
{
    std::size_t stripsLeft = 0;
    std::size_t bodiesLeft = 0;
    auto * const look = new tests::WitnessCurve([&] {
        stripsLeft = model().m_TriStrips.m_Entities.size();
        bodiesLeft = model().m_Bodies.m_Entities.size();
    });
    Loop * const loop = Loop::create(0);
    loop->addFin(
        Fin::create(0, Edge::create(0, Curve3D::create(0, look), nullptr, nullptr, true), true));
    Face * const face = Face::create(0, nullptr);
    face->addLoop(loop);
    Shell * const last = shell("last");
    last->addFace(face);
    Body * const body = Body::create(0, "body");
    body->addTriStrip(strip());
    body->addTriStrip(nullptr);
    body->addTriStrip(strip());
    body->addShell(shell("first"));
    body->addShell(nullptr);
    body->addShell(shell("second"));
    body->addShell(last);
    Body::destruct(body);
    EXPECT_EQ(m_Ends, (tests::Ends{"first", "second", "last"}));
    EXPECT_EQ(stripsLeft, 2U);
    EXPECT_EQ(bodiesLeft, 1U);
    EXPECT_TRUE(model().m_Bodies.m_Entities.empty());
    EXPECT_TRUE(model().m_Shells.m_Entities.empty());
    EXPECT_TRUE(model().m_TriStrips.m_Entities.empty());
}

TEST_F(BodyTest, TakesAlongWhateverLosesItsLastUser)
{
    Vertex * const inner = Vertex::create(0, new tests::ForeignPoint(m_Ends, "inner"));
    Vertex * const kept = Vertex::create(0, new tests::ForeignPoint(m_Ends, "kept"));
    Edge * const wire = Edge::create(0, nullptr, kept, nullptr, true);
    Edge * const edge = Edge::create(
        0, Curve3D::create(0, new tests::ForeignCurve(m_Ends, "curve")), inner, kept, true);
    Shell * const made = shell("surface");
    for (bool const sense : {true, false}) {
        Loop * const loop = Loop::create(0);
        loop->addFin(Fin::create(0, edge, sense));
        Face * const face = Face::create(0, nullptr);
        face->addLoop(loop);
        made->addFace(face);
    }
    Body * const body = Body::create(0, "body");
    body->addShell(made);
    Body::destruct(body);
    EXPECT_EQ(m_Ends, (tests::Ends{"surface", "curve", "inner"}));
    EXPECT_EQ(model().m_Edges.m_Entities.size(), 1U);
    EXPECT_EQ(model().m_Edges.m_Entities.lookup(wire->getId()), wire);
    for (auto const store : {&SubPool::m_Surfaces, &SubPool::m_Curves3D, &SubPool::m_Fins,
                             &SubPool::m_Loops, &SubPool::m_Faces, &SubPool::m_Shells})
        EXPECT_TRUE((model().*store).m_Entities.empty());
}

TEST_F(BodyTest, FollowsTheRulesOfIds)
{
    tests::expectRulesOfIds<Body>(&SubPool::m_Bodies,
                                  [](int id) { return Body::create(id, "body"); });
}

TEST_F(BodyTest, IsOfKindOne)
{
    EXPECT_EQ(Body::create(0, "body")->getEntityKind(), 1);
}

TEST_F(BodyTest, TableHoldsNameThenAddingThenWalkingStripsBeforeShells)
{
    EXPECT_EQ(tests::slotOf(&Body::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&Body::getName), 3U);
    EXPECT_EQ(tests::slotOf(&Body::setName), 4U);
    EXPECT_EQ(tests::slotOf(&Body::addTriStrip), 5U);
    EXPECT_EQ(tests::slotOf(&Body::addShell), 6U);
    EXPECT_EQ(tests::slotOf(&Body::forEachTriStrip), 7U);
    EXPECT_EQ(tests::slotOf(&Body::forEachShell), 8U);
    EXPECT_FALSE(tests::HasOriginalId<Body>);
}

} // namespace
} // namespace transl_tk
