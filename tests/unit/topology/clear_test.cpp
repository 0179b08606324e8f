#include "support/models.h"
#include "support/witnesses.h"

#include <keld-transl/topology/body.h>
#include <keld-transl/topology/cartesian_coord.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/spot_weld.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/tri_strip.h>
#include <keld-transl/topology/uv_curve.h>
#include <keld-transl/topology/vertex.h>

#include <gtest/gtest.h>

namespace transl_tk {
namespace {

TEST(ClearOfCarriers, EndsSurfacesThenUVCurvesThenCurvesInOrderOfIds)
{
    tests::ScopedPool const pool;
    tests::Ends ends;
    Curve3D::create(1, new tests::ForeignCurve(ends, "curve 1"));
    UVCurve::create(2, new tests::ForeignUVCurve(ends, "uv curve 2"));
    UVCurve::create(-4, new tests::ForeignUVCurve(ends, "uv curve -4"));
    Surface::create(9, new tests::ForeignSurface(ends, "surface 9"));
    Surface::create(8, new tests::ForeignSurface(ends, "surface 8"));
    Surface::create(10, nullptr);
    Pool::getInstance()->clear();
    EXPECT_EQ(ends,
              (tests::Ends{"surface 8", "surface 9", "uv curve -4", "uv curve 2", "curve 1"}));
}

TEST(ClearOfCarriers, EmptiesEveryStore)
{
    tests::ScopedPool const pool;
    tests::Ends ends;
    SpotWeld::create(0, 1, 2, 3)->addWeldName("weld");
    CartesianCoord::create(0, tests::At, tests::AxisX, tests::AxisY, tests::Nowhere);
    Curve3D::create(0, new tests::ForeignCurve(ends, "curve"));
    UVCurve::create(0, nullptr);
    Surface::create(0, nullptr);
    Pool::getInstance()->clear();
    for (auto const store : {&SubPool::m_SpotWelds, &SubPool::m_CartesianCoords,
                             &SubPool::m_Curves3D, &SubPool::m_UVCurves, &SubPool::m_Surfaces})
        EXPECT_TRUE((tests::currentSubPool().*store).m_Entities.empty());
}

class ClearOfTopology : public testing::Test
{
protected:
    Surface * surface(int id, char const * name)
    {
        return Surface::create(id, new tests::ForeignSurface(m_Ends, name));
    }
    Face * face(int id, char const * name) { return Face::create(id, surface(0, name)); }
    Shell * shell(int id, char const * name)
    {
        Shell * const made = Shell::create(id);
        made->addFace(face(0, name));
        return made;
    }
    UVCurve * trace(int id, char const * name)
    {
        return UVCurve::create(id, new tests::ForeignUVCurve(m_Ends, name));
    }
    Fin * fin(int id, char const * name)
    {
        Fin * const made = Fin::create(id, nullptr, true);
        made->setUVCurve(trace(0, name));
        return made;
    }
    Vertex * vertex(int id, char const * name)
    {
        return Vertex::create(id, new tests::ForeignPoint(m_Ends, name));
    }
    Curve3D * curve(int id, char const * name)
    {
        return Curve3D::create(id, new tests::ForeignCurve(m_Ends, name));
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

TEST_F(ClearOfTopology, GoesFromBodiesDownToCurves)
{
    // Everything that an upper step takes along has a larger id than what stands alone.
    curve(1, "free curve");
    vertex(1, "free vertex");
    trace(1, "free trace");
    fin(1, "free fin");
    surface(1, "free surface");
    face(1, "free face");
    shell(1, "free shell");
    Edge::create(0, curve(0, "curve of edge"), vertex(0, "vertex of edge"), nullptr, true);
    Loop::create(0)->addFin(fin(0, "fin of loop"));
    Body::create(0, "body")->addShell(shell(0, "shell of body"));
    model().clear();
    EXPECT_EQ(m_Ends, (tests::Ends{"shell of body", "free shell", "free face", "free surface",
                                   "fin of loop", "free fin", "free trace", "curve of edge",
                                   "vertex of edge", "free vertex", "free curve"}));
}

TEST_F(ClearOfTopology, EndsCurvesBeforeStrips)
{
    std::size_t stripsLeft = 0;
    Curve3D::create(
        0, new tests::WitnessCurve([&] { stripsLeft = model().m_TriStrips.m_Entities.size(); }));
    strip();
    model().clear();
    EXPECT_EQ(stripsLeft, 1U);
    EXPECT_TRUE(model().m_TriStrips.m_Entities.empty());
}

TEST_F(ClearOfTopology, EndsEachKindInOrderOfIds)
{
    vertex(3, "vertex 3");
    vertex(-1, "vertex -1");
    Edge::create(7, curve(0, "edge 7"), nullptr, nullptr, true);
    Edge::create(-7, curve(0, "edge -7"), nullptr, nullptr, true);
    fin(5, "fin 5");
    fin(2, "fin 2");
    Loop::create(5)->addFin(fin(8, "loop 5"));
    Loop::create(2)->addFin(fin(9, "loop 2"));
    face(5, "face 5");
    face(2, "face 2");
    shell(5, "shell 5");
    shell(2, "shell 2");
    Body::create(5, "")->addShell(shell(8, "body 5"));
    Body::create(2, "")->addShell(shell(9, "body 2"));
    model().clear();
    EXPECT_EQ(m_Ends, (tests::Ends{"body 2", "body 5", "shell 2", "shell 5", "face 2", "face 5",
                                   "loop 2", "loop 5", "fin 2", "fin 5", "edge -7", "edge 7",
                                   "vertex -1", "vertex 3"}));
}

TEST_F(ClearOfTopology, TakesAWholeModelWithNullsInItsLists)
{
    Vertex * const corner = vertex(0, "corner");
    Edge * const edge = Edge::create(0, curve(0, "curve"), corner, corner, true);
    Fin * const used = Fin::create(0, edge, true);
    used->setUVCurve(trace(0, "trace"));
    Loop * const loop = Loop::create(0);
    loop->addFin(nullptr);
    loop->addFin(used);
    Face * const sheet = face(0, "surface");
    sheet->addLoop(nullptr);
    sheet->addLoop(loop);
    Shell * const made = Shell::create(0);
    made->addFace(nullptr);
    made->addFace(sheet);
    Body * const body = Body::create(0, "body");
    body->addShell(nullptr);
    body->addShell(made);
    body->addTriStrip(nullptr);
    body->addTriStrip(strip());
    model().clear();
    EXPECT_EQ(m_Ends, (tests::Ends{"surface", "trace", "curve", "corner"}));
    for (auto const store :
         {&SubPool::m_Bodies, &SubPool::m_Shells, &SubPool::m_Faces, &SubPool::m_Surfaces,
          &SubPool::m_Loops, &SubPool::m_Fins, &SubPool::m_UVCurves, &SubPool::m_Edges,
          &SubPool::m_Vertices, &SubPool::m_Curves3D, &SubPool::m_TriStrips})
        EXPECT_TRUE((model().*store).m_Entities.empty());
}

TEST_F(ClearOfTopology, LeavesTheEntriesOfAllUsersWithoutAnyOfThem)
{
    Surface * const sheet = surface(5, "surface");
    Face::create(0, sheet);
    Face::create(0, sheet);
    Vertex * const end = vertex(5, "vertex");
    Edge * const edge = Edge::create(5, curve(5, "curve"), end, nullptr, true);
    Fin::create(0, edge, true);
    model().clear();
    for (auto const store :
         {&SubPool::m_Surfaces, &SubPool::m_Vertices, &SubPool::m_Edges, &SubPool::m_Curves3D})
        EXPECT_EQ((model().*store).m_Users.size(), 1U);
    m_Ends.clear();
    Face::destruct(Face::create(0, surface(5, "new surface")));
    EXPECT_EQ(m_Ends, (tests::Ends{"new surface"}));
}

TEST_F(ClearOfTopology, DoesNotMindUsersThatOutlivedWhatTheyUse)
{
    Vertex * const end = vertex(5, "vertex");
    Edge * const edge = Edge::create(0, nullptr, end, end, true);
    Fin::create(0, edge, true);
    Surface * const sheet = surface(5, "surface");
    Face::create(0, sheet);
    Vertex::destruct(end);
    Edge::destruct(edge);
    Surface::destruct(sheet);
    vertex(5, "new vertex");
    surface(5, "new surface");
    model().clear();
    EXPECT_EQ(m_Ends, (tests::Ends{"vertex", "surface", "new surface", "new vertex"}));
    EXPECT_TRUE(model().m_Faces.m_Entities.empty());
    EXPECT_TRUE(model().m_Fins.m_Entities.empty());
}

} // namespace
} // namespace transl_tk
