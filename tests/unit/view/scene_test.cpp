#include "unit/view/view_models.h"

#include <keld-transl/topology/shell.h>

#include <gmock/gmock.h>

namespace {

using namespace tests;
using keld::view::Occurrence;
using keld::view::Triple;
using keld::view::UsualColour;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr float Nowhere = std::numeric_limits<float>::quiet_NaN();
constexpr float Infinite = std::numeric_limits<float>::infinity();

class SceneOfModel : public testing::Test
{
protected:
    tests::ScopedPool const m_Pool;
};

std::vector<Triple> origins(Scene const & scene)
{
    std::vector<Triple> result;
    for (Occurrence const & occurrence : scene.occurrences)
        result.push_back(occurrence.placement.origin);
    return result;
}

std::vector<Colour> colours(Scene const & scene)
{
    std::vector<Colour> result;
    for (Occurrence const & occurrence : scene.occurrences)
        result.push_back(occurrence.colour);
    return result;
}

std::vector<Triple> cornersOf(Scene const & scene)
{
    std::vector<Triple> corners;
    for (Occurrence const & occurrence : scene.occurrences) {
        auto const & mesh = scene.meshes[occurrence.mesh];
        mesh.forEachTriangle([&](std::size_t a, std::size_t b, std::size_t c) {
            for (std::size_t const i : {a, b, c})
                corners.push_back(occurrence.placement.applied(mesh.vertex(i)));
        });
    }
    return corners;
}

TEST_F(SceneOfModel, IsEmptyForAnEmptyModel)
{
    Scene const scene = gathered();
    EXPECT_TRUE(scene.isEmpty());
    EXPECT_THAT(scene.occurrences, IsEmpty());
    EXPECT_TRUE(scene.complete);
    EXPECT_FALSE(scene.hasShells);
}

TEST_F(SceneOfModel, HasMeshesAndBodiesOutsideOfParts)
{
    aTriangle();
    aBody(aTriangle());
    Scene const scene = gathered();
    EXPECT_EQ(2U, scene.triangles);
    EXPECT_THAT(origins(scene), ElementsAre(Triple{0, 0, 0}, Triple{0, 0, 0}));
}

TEST_F(SceneOfModel, HasMeshesThatAPartListsItself)
{
    Part * const part = Part::create(0, "part");
    part->addTriStrip(aTriangle());
    move(part, 1, 2, 3);
    EXPECT_THAT(origins(gathered()), ElementsAre(Triple{1, 2, 3}));
}

TEST_F(SceneOfModel, KnowsWhetherThereAreShells)
{
    aPart();
    EXPECT_FALSE(gathered().hasShells);
    Body::create(0, "exact")->addShell(transl_tk::Shell::create(0));
    EXPECT_TRUE(gathered().hasShells);
}

TEST_F(SceneOfModel, HasAPartOnceForEachPlace)
{
    Part * const part = aPart();
    Assembly * const top = Assembly::create(0, "top");
    place(part, top, 10);
    place(part, top, 20);
    Scene const scene = gathered();
    EXPECT_EQ(1U, scene.meshes.size());
    EXPECT_EQ(2U, scene.triangles);
    EXPECT_THAT(origins(scene), ElementsAre(Triple{10, 0, 0}, Triple{20, 0, 0}));
}

TEST_F(SceneOfModel, HasPartsThatAreChildrenWithTheirOwnTransforms)
{
    Part * const part = aPart();
    move(part, 0, 5, 0);
    Assembly * const top = Assembly::create(0, "top");
    move(top, 100, 0, 0);
    top->addChild(part);
    place(part, top, 10);
    // The instance's transform takes the place of the part's.
    EXPECT_THAT(origins(gathered()), ElementsAre(Triple{100, 5, 0}, Triple{110, 0, 0}));
}

TEST_F(SceneOfModel, PlacesWhatAnInstanceOfAnAssemblyHolds)
{
    Assembly * const inner = Assembly::create(0, "inner");
    place(aPart(), inner, 1);
    Assembly * const top = Assembly::create(0, "top");
    place(inner, top, 10);
    Instance * const turned = place(inner, top);
    double const quarter[16] = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 7, 1};
    turned->setTransform(quarter);
    Scene const scene = gathered();
    EXPECT_THAT(origins(scene), ElementsAre(Triple{11, 0, 0}, Triple{0, 1, 7}));
    EXPECT_THAT(cornersOf(scene), ElementsAre(Triple{11, 0, 0}, Triple{12, 0, 0}, Triple{11, 1, 0},
                                              Triple{0, 1, 7}, Triple{0, 2, 7}, Triple{-1, 1, 7}));
}

TEST_F(SceneOfModel, MirrorsAndScales)
{
    Instance * const instance = place(aPart(), Assembly::create(0, "top"));
    double const mirror[16] = {-1, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    instance->setTransform(mirror);
    EXPECT_THAT(cornersOf(gathered()),
                ElementsAre(Triple{0, 0, 0}, Triple{-1, 0, 0}, Triple{0, 2, 0}));
}

TEST_F(SceneOfModel, IsTheSameBelowAnAssemblyThatTheToolkitMade)
{
    place(aPart(), Assembly::create(0, "top"), 10);
    aPart();
    Hierarchy::getTopAssembly();
    EXPECT_THAT(origins(gathered()), ElementsAre(Triple{10, 0, 0}, Triple{0, 0, 0}));
}

TEST_F(SceneOfModel, HasAnInstanceThatStandsInNoAssembly)
{
    move(Instance::create(0, aPart()), 3, 0, 0);
    EXPECT_THAT(origins(gathered()), ElementsAre(Triple{3, 0, 0}));
}

TEST_F(SceneOfModel, EndsWhereAnAssemblyHoldsAnInstanceOfItself)
{
    Assembly * const ring = Assembly::create(0, "ring");
    place(aPart(), ring, 1);
    place(ring, ring, 10);
    place(ring, Assembly::create(0, "top"), 100);
    EXPECT_THAT(origins(gathered()), ElementsAre(Triple{101, 0, 0}));
}

TEST_F(SceneOfModel, IsGatheredFromADeepStructure)
{
    Assembly * parent = Assembly::create(0, "top");
    for (int level = 0; level < 200000; ++level) {
        Assembly * const assembly = Assembly::create(0, "");
        move(assembly, 1, 0, 0);
        parent->addChild(assembly);
        parent = assembly;
    }
    parent->addChild(aPart());
    EXPECT_THAT(origins(gathered()), ElementsAre(Triple{200000, 0, 0}));
}

/// 2 to the power of 20 places.
TEST_F(SceneOfModel, EndsAtTheLimitOfNodes)
{
    transl_tk::Component * inner = aPart();
    for (int level = 0; level < 20; ++level) {
        Assembly * const outer = Assembly::create(0, "");
        place(inner, outer);
        place(inner, outer);
        inner = outer;
    }
    Scene const scene = gathered({100, 50});
    EXPECT_FALSE(scene.complete);
    EXPECT_LT(0U, scene.triangles);
    EXPECT_GE(50U, scene.triangles);
}

TEST_F(SceneOfModel, LeavesOutWhatIsBeyondTheLimitOfTriangles)
{
    Part * const part = aPart();
    Assembly * const top = Assembly::create(0, "top");
    for (int i = 0; i < 5; ++i)
        place(part, top);
    EXPECT_TRUE(gathered({5, 100}).complete);
    Scene const scene = gathered({4, 100});
    EXPECT_FALSE(scene.complete);
    EXPECT_EQ(4U, scene.triangles);
}

TEST_F(SceneOfModel, CountsVerticesAndIndicesThatNoTriangleNeedsTowardsTheLimit)
{
    meshOf(std::vector<float>(3 * 300, 0), {0, 1, 2});
    EXPECT_EQ(1U, gathered({100, 100}).triangles);
    EXPECT_FALSE(gathered({99, 100}).complete);
    tests::currentSubPool().clear();
    std::vector<int> indices(3 * 100, -1);
    indices[0] = indices[1] = indices[2] = 0;
    meshOf({0, 0, 0}, indices);
    EXPECT_EQ(1U, gathered({100, 100}).triangles);
    EXPECT_FALSE(gathered({99, 100}).complete);
}

TEST_F(SceneOfModel, LeavesOutTrianglesThatCannotBeDrawn)
{
    meshOf({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, Nowhere, 0, 0, Infinite, 0, 2e30F, 0, 0},
           {0, 1, 2, 0, 1, 6, 0, -1, 2, 0, 1, 3, 0, 1, 4, 0, 1, 5, 0, 1});
    Scene const scene = gathered();
    EXPECT_EQ(1U, scene.triangles);
    EXPECT_THAT(cornersOf(scene), ElementsAre(Triple{0, 0, 0}, Triple{1, 0, 0}, Triple{0, 1, 0}));
}

TEST_F(SceneOfModel, LeavesOutMeshesWithoutTriangles)
{
    meshOf({0, 0, 0, 1, 0, 0, Nowhere, 0, 0}, {0, 1, 2});
    meshOf({0, 0, 0}, {});
    Body::create(0, "empty");
    EXPECT_TRUE(gathered().isEmpty());
    EXPECT_THAT(gathered().meshes, IsEmpty());
}

TEST_F(SceneOfModel, TakesThreeVerticesInARowOfAStripAndLeavesItsJoinsOut)
{
    meshOf({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0, 1, 1, 0, 0, 0, 5, 0, 0, 5, 1, 0, 5, 0, 1, 5}, {});
    Scene const scene = gathered();
    EXPECT_EQ(3U, scene.triangles);
    EXPECT_THAT(cornersOf(scene), ElementsAre(Triple{0, 0, 0}, Triple{1, 0, 0}, Triple{0, 1, 0},
                                              Triple{1, 0, 0}, Triple{0, 1, 0}, Triple{1, 1, 0},
                                              Triple{0, 0, 5}, Triple{1, 0, 5}, Triple{0, 1, 5}));
}

TEST_F(SceneOfModel, LeavesOutPlacesThatAreNone)
{
    Part * const part = aPart();
    Assembly * const top = Assembly::create(0, "top");
    move(place(part, top), std::numeric_limits<double>::quiet_NaN(), 0, 0);
    move(place(part, top), std::numeric_limits<double>::infinity(), 0, 0);
    move(place(part, top), 0, 1e300, 0);
    place(part, top, 5);
    Scene const scene = gathered();
    EXPECT_THAT(origins(scene), ElementsAre(Triple{5, 0, 0}));
    EXPECT_EQ((Triple{5, 0, 0}), scene.box.low);
    EXPECT_EQ((Triple{6, 1, 0}), scene.box.high);
}

TEST_F(SceneOfModel, HasTheUsualColourWithoutAttributes)
{
    aPart();
    EXPECT_THAT(colours(gathered()), ElementsAre(UsualColour));
}

TEST_F(SceneOfModel, TakesTheColourOfTheBodyBeforeAllOthers)
{
    Body * const body = aBody(aTriangle());
    Part * const part = Part::create(0, "part");
    part->addBody(body);
    Instance * const instance = place(part, Assembly::create(0, "top"));
    paint(body, Red);
    paint(part, Green);
    paint(instance, Blue);
    EXPECT_THAT(colours(gathered()), ElementsAre(Red));
}

TEST_F(SceneOfModel, TakesTheColourOfAnInstanceBeforeThatOfThePart)
{
    Part * const part = aPart();
    Assembly * const top = Assembly::create(0, "top");
    Instance * const painted = place(part, top);
    place(part, top);
    paint(part, Green);
    paint(painted, Blue);
    EXPECT_THAT(colours(gathered()), ElementsAre(Blue, Green));
}

TEST_F(SceneOfModel, TakesTheColourOfThePartBeforeThoseOfAssemblies)
{
    Part * const plain = aPart();
    Part * const green = aPart();
    Assembly * const inner = Assembly::create(0, "inner");
    place(plain, inner);
    place(green, inner);
    Assembly * const top = Assembly::create(0, "top");
    Instance * const outer = place(inner, top);
    paint(green, Green);
    paint(top, Red);
    EXPECT_THAT(colours(gathered()), ElementsAre(Red, Green));
    paint(inner, White);
    EXPECT_THAT(colours(gathered()), ElementsAre(White, Green));
    paint(outer, Blue);
    EXPECT_THAT(colours(gathered()), ElementsAre(Blue, Green));
}

TEST_F(SceneOfModel, TakesSurfaceColourBeforeColourAndNoOtherAttribute)
{
    Part * const part = aPart();
    paint(part, White, "curve color");
    paint(part, White, "surface color", 2);
    EXPECT_THAT(colours(gathered()), ElementsAre(UsualColour));
    paint(part, Green, "surface color");
    paint(part, Blue, "color");
    EXPECT_THAT(colours(gathered()), ElementsAre(Green));
}

TEST_F(SceneOfModel, HasVerticesOfTheOccurrencesColourWhereTheyHaveThatOfTheirPart)
{
    Part * const part = Part::create(0, "part");
    part->addBody(aBody(aTriangle({0, 255, 0, 255, 0, 0, 0, 255, 0})));
    paint(part, Green);
    auto const scene = gathered();
    EXPECT_EQ(std::nullopt, scene.meshes[0].colour(0));
    EXPECT_EQ(Red, scene.meshes[0].colour(1));
    EXPECT_EQ(std::nullopt, scene.meshes[0].colour(2));
    EXPECT_THAT(colours(scene), ElementsAre(Green));
}

TEST_F(SceneOfModel, TakesNormalsOnlyWhenEveryVertexHasOne)
{
    meshOf({0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}, {}, {0, 0, 1, 0, 0, 1, 0, 0, 1});
    meshOf({0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}, {}, {0, 0, 1, 0, 0, 1});
    auto const scene = gathered();
    EXPECT_NE(nullptr, scene.meshes[0].normals);
    EXPECT_EQ(nullptr, scene.meshes[1].normals);
}

} // namespace
