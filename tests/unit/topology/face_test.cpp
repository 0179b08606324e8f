#include "support/slots.h"
#include "support/witnesses.h"
#include "unit/topology/topology_rules.h"

#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/uv_curve.h>

#include <cstdint>

namespace transl_tk {
namespace {

class FaceTest : public testing::Test
{
protected:
    Surface * surface(int id, char const * name)
    {
        return Surface::create(id, new tests::ForeignSurface(m_Ends, name));
    }
    /// A loop whose end shows.
    Loop * loop(char const * name)
    {
        Fin * const fin = Fin::create(0, nullptr, true);
        fin->setUVCurve(UVCurve::create(0, new tests::ForeignUVCurve(m_Ends, name)));
        Loop * const made = Loop::create(0);
        made->addFin(fin);
        return made;
    }
    static EntityStore & surfaces() { return tests::currentSubPool().m_Surfaces; }
    static EntityTable & faces() { return tests::currentSubPool().m_Faces.m_Entities; }

    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
};

TEST_F(FaceTest, IsNewWithItsSurfaceAndSenseAndWithoutLabelOrLoops)
{
    Surface * const used = surface(0, "surface");
    Face * const face = Face::create(0, used);
    EXPECT_EQ(face->getSurface(), used);
    EXPECT_TRUE(face->getSense());
    EXPECT_STREQ(face->getLabel(), "");
    EXPECT_TRUE(tests::childrenOf(face, &Face::forEachLoop).empty());
}

TEST_F(FaceTest, OfNoSurfaceIsMadeAndFreed)
{
    Face * const face = Face::create(0, nullptr);
    EXPECT_EQ(face->getSurface(), nullptr);
    Face::destruct(face);
    EXPECT_TRUE(faces().empty());
    EXPECT_EQ(surfaces().m_Users.size(), 0U);
}

TEST_F(FaceTest, KeepsItsSense)
{
    Face * const face = Face::create(0, nullptr);
    face->setSense(false);
    EXPECT_FALSE(face->getSense());
    face->setSense(true);
    EXPECT_TRUE(face->getSense());
}

TEST_F(FaceTest, CopiesItsLabel)
{
    Face * const face = Face::create(0, nullptr);
    char text[] = "a label that is too long to stand in the object itself";
    face->setLabel(text);
    text[0] = 'b';
    EXPECT_STREQ(face->getLabel(), "a label that is too long to stand in the object itself");
    face->setLabel("");
    EXPECT_STREQ(face->getLabel(), "");
}

TEST_F(FaceTest, TakesItsOwnLabel)
{
    Face * const face = Face::create(0, nullptr);
    face->setLabel("a label that is too long to stand in the object itself");
    face->setLabel(face->getLabel() + 2);
    EXPECT_STREQ(face->getLabel(), "label that is too long to stand in the object itself");
}

TEST_F(FaceTest, TakesNullForAnEmptyLabel)
{
    Face * const face = Face::create(0, nullptr);
    face->setLabel("label");
    face->setLabel(nullptr);
    EXPECT_STREQ(face->getLabel(), "");
}

TEST_F(FaceTest, KeepsItsLoopsInOrderAndWalksThemUntilTheFirstFalse)
{
    tests::expectList(Face::create(0, nullptr), &Face::addLoop, &Face::forEachLoop,
                      {loop("c"), nullptr, loop("a"), loop("d"), loop("b")});
}

TEST_F(FaceTest, FreesItsSurfaceThenItsLoopsInOrder)
{
    Face * const face = Face::create(0, surface(0, "surface"));
    Loop * const last = loop("last");
    face->addLoop(loop("first"));
    face->addLoop(nullptr);
    face->addLoop(loop("second"));
    face->addLoop(last);
    Face::destruct(face);
    EXPECT_EQ(m_Ends, (tests::Ends{"surface", "first", "second", "last"}));
    EXPECT_TRUE(surfaces().m_Entities.empty());
    EXPECT_TRUE(tests::currentSubPool().m_Loops.m_Entities.empty());
}

TEST_F(FaceTest, LeavesItsStoreAfterItHasFreedItsLoops)
{
    std::size_t facesLeft = 0;
    auto * const look = new tests::WitnessCurve([&] { facesLeft = faces().size(); });
    Loop * const outer = Loop::create(0);
    outer->addFin(
        Fin::create(0, Edge::create(0, Curve3D::create(0, look), nullptr, nullptr, true), true));
    Face * const face = Face::create(0, nullptr);
    face->addLoop(outer);
    Face::destruct(face);
    EXPECT_EQ(facesLeft, 1U);
    EXPECT_TRUE(faces().empty());
}

TEST_F(FaceTest, SharesItsSurfaceUntilTheLastFaceGoes)
{
    Surface * const shared = surface(0, "shared");
    Face * const first = Face::create(0, shared);
    Face * const second = Face::create(0, shared);
    Face::destruct(second);
    EXPECT_EQ(surfaces().m_Entities.lookup(1), shared);
    EXPECT_TRUE(m_Ends.empty());
    Face::destruct(first);
    EXPECT_EQ(m_Ends, (tests::Ends{"shared"}));
    EXPECT_TRUE(surfaces().m_Entities.empty());
    EXPECT_EQ(surfaces().m_Users.size(), 1U);
}

TEST_F(FaceTest, FollowsTheRulesOfIds)
{
    tests::expectRulesOfIds<Face>(&SubPool::m_Faces,
                                  [](int id) { return Face::create(id, nullptr); });
}

TEST_F(FaceTest, OfATakenIdUsesNothing)
{
    Face::create(5, nullptr);
    EXPECT_EQ(Face::create(5, surface(0, "surface")), nullptr);
    EXPECT_EQ(surfaces().m_Users.size(), 0U);
    EXPECT_TRUE(m_Ends.empty());
}

TEST_F(FaceTest, DoesNotTouchASurfaceThatSomebodyDestroyedBefore)
{
    Surface * const used = surface(0, "surface");
    Face * const face = Face::create(0, used);
    Surface::destruct(used);
    EXPECT_EQ(face->getSurface(), used);
    Face::destruct(face);
    EXPECT_EQ(m_Ends, (tests::Ends{"surface"}));
}

TEST_F(FaceTest, IsNoUserOfASurfaceThatTookIdAndPlaceOfTheDestroyedOne)
{
    Surface * const used = surface(5, "old");
    auto const place = reinterpret_cast<std::uintptr_t>(used);
    Face * const first = Face::create(0, used);
    Face * const second = Face::create(0, used);
    Surface::destruct(used);
    Surface * const successor = surface(5, "new");
    tests::expectPlace(successor, place);
    Face::destruct(first);
    EXPECT_EQ(surfaces().m_Entities.lookup(5), successor);
    Face::destruct(Face::create(0, successor));
    EXPECT_EQ(m_Ends, (tests::Ends{"old", "new"}));
    Face::destruct(second);
}

TEST_F(FaceTest, DestroyedUnderAnotherSubPoolLeavesItsSurfaceAlone)
{
    Surface * const used = surface(5, "surface");
    Face * const face = Face::create(7, used);
    SubPool & own = tests::currentSubPool();
    Pool::construct("other");
    surface(5, "other surface");
    Face::destruct(face);
    EXPECT_TRUE(m_Ends.empty());
    EXPECT_TRUE(own.m_Faces.m_Entities.empty());
    EXPECT_EQ(own.m_Surfaces.m_Entities.lookup(5), used);
    EXPECT_EQ(surfaces().m_Entities.size(), 1U);
}

TEST_F(FaceTest, HasTheForeignSystemsHandle)
{
    tests::expectOriginalId(Face::create(3, nullptr));
}

TEST_F(FaceTest, IsOfKindFive)
{
    EXPECT_EQ(Face::create(0, nullptr)->getEntityKind(), 5);
}

TEST_F(FaceTest, TableHoldsAddingThenSenseSurfaceLabelAndWalking)
{
    EXPECT_EQ(tests::slotOf(&Face::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&Face::addLoop), 3U);
    EXPECT_EQ(tests::slotOf(&Face::setSense), 4U);
    EXPECT_EQ(tests::slotOf(&Face::getSurface), 5U);
    EXPECT_EQ(tests::slotOf(&Face::getSense), 6U);
    EXPECT_EQ(tests::slotOf(&Face::getLabel), 7U);
    EXPECT_EQ(tests::slotOf(&Face::setLabel), 8U);
    EXPECT_EQ(tests::slotOf(&Face::forEachLoop), 9U);
}

} // namespace
} // namespace transl_tk
