#include "product_fixture.h"
#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/attributes/leaf.h>
#include <keld-transl/attributes/node_tree.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/cartesian_coord.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/spot_weld.h>
#include <keld-transl/topology/tri_strip.h>

namespace transl_tk {
namespace {

Annotation * anAnnotation()
{
    constexpr double triple[3] = {};
    constexpr int ints[3] = {};
    return Annotation::create(0, triple, triple, triple, triple, 0, nullptr, ints, ints, ints, ints,
                              0, 0, 0, 0, 0, "", "");
}

Body * aBody()
{
    return Body::create(0, "body");
}

CartesianCoord * aCoord()
{
    return CartesianCoord::create(0, tests::At, tests::AxisX, tests::AxisY, tests::Nowhere);
}

Edge * anEdge()
{
    return Edge::create(0, nullptr, nullptr, nullptr, true);
}

Point3D * aPoint()
{
    return Point3D::create(0, 1, 2, 3);
}

SpotWeld * aWeld()
{
    return SpotWeld::create(0, 1, 2, 3);
}

TriStrip * aStrip()
{
    constexpr float vertices[3] = {};
    return TriStrip::create(0, vertices, nullptr, 1, nullptr, 0, nullptr, 0, false);
}

class PartTest : public tests::ProductTest
{
protected:
    Curve3D * aCurve(char const * name)
    {
        return Curve3D::create(0, new tests::ForeignCurve(m_Ends, name));
    }

    /// Checks one of the part's lists: null is passed over, order and repetitions stay, and a walk
    /// stops at the first false.
    template <class Entity>
    void expectAList(void (Part::*add)(Entity *),
                     bool (Part::*forEach)(bool (*)(Entity *, void *), void *), Entity * first,
                     Entity * second)
    {
        auto const stop = [](Entity *, void * calls) { return ++*static_cast<int *>(calls) < 2; };
        int calls = 0;
        EXPECT_TRUE((m_Part->*forEach)(stop, &calls));
        for (Entity * const entity : {second, static_cast<Entity *>(nullptr), first, second})
            (m_Part->*add)(entity);
        std::vector<Entity *> found;
        EXPECT_TRUE((m_Part->*forEach)(tests::append<Entity>, &found));
        EXPECT_EQ(found, (std::vector<Entity *>{second, first, second}));
        EXPECT_FALSE((m_Part->*forEach)(stop, &calls));
        EXPECT_EQ(calls, 2);
    }

    static std::size_t count(EntityStore SubPool::*store)
    {
        return (tests::currentSubPool().*store).m_Entities.size();
    }

    Part * m_Part = Part::create(0, "part");
};

TEST_F(PartTest, ListsAnnotations)
{
    expectAList(&Part::addAnnotation, &Part::forEachAnnotation, anAnnotation(), anAnnotation());
}

TEST_F(PartTest, ListsEdges)
{
    expectAList(&Part::addEdge, &Part::forEachEdge, anEdge(), anEdge());
}

TEST_F(PartTest, ListsCurves)
{
    expectAList(&Part::addCurve, &Part::forEachCurve, aCurve("first"), aCurve("second"));
}

TEST_F(PartTest, ListsTriStrips)
{
    expectAList(&Part::addTriStrip, &Part::forEachTriStrip, aStrip(), aStrip());
}

TEST_F(PartTest, ListsCoordinateSystems)
{
    expectAList(&Part::addCartesianCoord, &Part::forEachCartesianCoord, aCoord(), aCoord());
}

TEST_F(PartTest, ListsSpotWelds)
{
    expectAList(&Part::addSpotWeld, &Part::forEachSpotWeld, aWeld(), aWeld());
}

TEST_F(PartTest, ListsPoints)
{
    expectAList(&Part::addPoint, &Part::forEachPoint, aPoint(), aPoint());
}

TEST_F(PartTest, ListsBodies)
{
    expectAList(&Part::addBody, &Part::forEachBody, aBody(), aBody());
}

TEST_F(PartTest, AWalkBearsACallbackThatAdds)
{
    m_Part->addPoint(aPoint());
    int calls = 0;
    struct Context
    {
        Part * part;
        int & calls;
    } context{m_Part, calls};
    m_Part->forEachPoint(
        [](Point3D *, void * user) {
            auto & [part, count] = *static_cast<Context *>(user);
            if (++count < 1000)
                part->addPoint(aPoint());
            return true;
        },
        &context);
    EXPECT_EQ(calls, 1000);
}

TEST_F(PartTest, APartFreesSevenOfItsEightLists)
{
    m_Part->addAnnotation(anAnnotation());
    m_Part->addEdge(anEdge());
    m_Part->addCurve(aCurve("curve"));
    m_Part->addTriStrip(aStrip());
    m_Part->addCartesianCoord(aCoord());
    m_Part->addSpotWeld(aWeld());
    m_Part->addPoint(aPoint());
    m_Part->addBody(aBody());
    Hierarchy::destruct(m_Part);
    for (auto const store : {&SubPool::m_Annotations, &SubPool::m_Curves3D, &SubPool::m_TriStrips,
                             &SubPool::m_CartesianCoords, &SubPool::m_SpotWelds, &SubPool::m_Points,
                             &SubPool::m_Bodies, &SubPool::m_Hierarchies})
        EXPECT_EQ(count(store), 0U);
    EXPECT_EQ(count(&SubPool::m_Edges), 1U);
    Pool::getInstance()->clear();
    EXPECT_EQ(count(&SubPool::m_Edges), 0U);
}

TEST_F(PartTest, FreesItsCurvesInOrder)
{
    for (char const * const name : {"first", "second", "third"})
        m_Part->addCurve(aCurve(name));
    Hierarchy::destruct(m_Part);
    EXPECT_EQ(m_Ends, (tests::Ends{"first", "second", "third"}));
}

TEST_F(PartTest, WhatIsListedTwiceIsFreedOnce)
{
    Part * const other = Part::create(0, "other");
    Body * const body = aBody();
    for (Part * const part : {m_Part, m_Part, other})
        part->addBody(body);
    Curve3D * const curve = aCurve("curve");
    m_Part->addCurve(curve);
    other->addCurve(curve);
    Hierarchy::destruct(m_Part);
    EXPECT_EQ(count(&SubPool::m_Bodies), 0U);
    EXPECT_EQ(m_Ends.size(), 1U);
    Hierarchy::destruct(other);
    EXPECT_EQ(m_Ends.size(), 1U);
}

TEST_F(PartTest, ItsContentsGoAlsoWhenAnotherSubPoolIsCurrent)
{
    m_Part->addCurve(aCurve("curve"));
    Pool::getInstance()->newWorkingSubPool("other");
    Hierarchy::destruct(m_Part);
    EXPECT_EQ(m_Ends.size(), 1U);
    Pool::getInstance()->setCurrent("test");
    EXPECT_EQ(count(&SubPool::m_Hierarchies), 0U);
    EXPECT_EQ(count(&SubPool::m_Curves3D), 0U);
}

TEST_F(PartTest, HasAParameterTreeThatGoesAlong)
{
    NodeTree * const tree = m_Part->getNodeTree();
    ASSERT_NE(tree, nullptr);
    EXPECT_TRUE(tree->forEachNode([](Node *, void *) { return false; }, nullptr));
    tree->addNode(Leaf::create(1));
    EXPECT_EQ(m_Part->getNodeTree(), tree);
    EXPECT_FALSE(tree->forEachNode([](Node *, void *) { return false; }, nullptr));
}

TEST_F(PartTest, ItsLabelPassesThroughUntouched)
{
    EXPECT_STREQ(m_Part->getPartLabel(), "");
    m_Part->setPartLabel("<label>\xFF");
    EXPECT_STREQ(m_Part->getPartLabel(), "<label>\xFF");
    m_Part->setPartLabel(nullptr);
    EXPECT_STREQ(m_Part->getPartLabel(), "");
}

TEST_F(PartTest, ClearFreesPartsBeforeAssemblies)
{
    Assembly * const assembly = Assembly::create(-7, "assembly");
    Part * const inner = Part::create(0, "inner");
    assembly->addChild(inner);
    inner->addCurve(aCurve("in the assembly"));
    m_Part->addCurve(aCurve("on top"));
    Part * const first = Part::create(-3, "first");
    first->addCurve(aCurve("first on top"));
    Pool::getInstance()->clear();
    EXPECT_EQ(m_Ends, (tests::Ends{"first on top", "on top", "in the assembly"}));
}

TEST_F(PartTest, ClearGoesThroughAssembliesInOrderOfIdsAndChildren)
{
    Assembly * const top = Assembly::create(-7, "top");
    Assembly * const inner = Assembly::create(0, "inner");
    Assembly * const second = Assembly::create(0, "second");
    Part * parts[4];
    char const * const names[] = {"in inner", "in top", "in inner, second", "in second"};
    for (int i = 0; i < 4; ++i) {
        parts[i] = Part::create(0, names[i]);
        parts[i]->addCurve(aCurve(names[i]));
    }
    top->addChild(inner);
    inner->addChild(parts[0]);
    top->addChild(parts[1]);
    inner->addChild(parts[2]);
    second->addChild(parts[3]);
    Pool::getInstance()->clear();
    EXPECT_EQ(m_Ends, (tests::Ends{"in inner", "in inner, second", "in top", "in second"}));
}

TEST_F(PartTest, TableGoesOnWithTreeLabelWalksAndAdditions)
{
    EXPECT_EQ(tests::slotOf(&Part::getNodeTree), 18U);
    EXPECT_EQ(tests::slotOf(&Part::getPartLabel), 19U);
    EXPECT_EQ(tests::slotOf(&Part::setPartLabel), 20U);
    EXPECT_EQ(tests::slotOf(&Part::forEachAnnotation), 21U);
    EXPECT_EQ(tests::slotOf(&Part::forEachEdge), 22U);
    EXPECT_EQ(tests::slotOf(&Part::forEachCurve), 23U);
    EXPECT_EQ(tests::slotOf(&Part::forEachTriStrip), 24U);
    EXPECT_EQ(tests::slotOf(&Part::forEachCartesianCoord), 25U);
    EXPECT_EQ(tests::slotOf(&Part::forEachSpotWeld), 26U);
    EXPECT_EQ(tests::slotOf(&Part::forEachPoint), 27U);
    EXPECT_EQ(tests::slotOf(&Part::forEachBody), 28U);
    EXPECT_EQ(tests::slotOf(&Part::addAnnotation), 29U);
    EXPECT_EQ(tests::slotOf(&Part::addEdge), 30U);
    EXPECT_EQ(tests::slotOf(&Part::addCurve), 31U);
    EXPECT_EQ(tests::slotOf(&Part::addTriStrip), 32U);
    EXPECT_EQ(tests::slotOf(&Part::addCartesianCoord), 33U);
    EXPECT_EQ(tests::slotOf(&Part::addSpotWeld), 34U);
    EXPECT_EQ(tests::slotOf(&Part::addPoint), 35U);
    EXPECT_EQ(tests::slotOf(&Part::addBody), 36U);
}

} // namespace
} // namespace transl_tk
