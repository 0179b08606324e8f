#include "unit/view/view_models.h"
#include "view/scene_data.h"

#include <cstdint>
#include <cstring>
#include <gmock/gmock.h>

namespace {

using namespace tests;
using keld::view::Base64;
using keld::view::fitsPage;
using keld::view::PageLimits;
using keld::view::sceneJson;
using keld::view::writeMeshes;
using testing::HasSubstr;

class SceneData : public testing::Test
{
protected:
    static std::string meshes()
    {
        std::string text;
        Base64 output([&](std::string_view piece) { text += piece; });
        writeMeshes(gathered(), output);
        std::erase(text, '\n');
        return text;
    }

    static std::string json()
    {
        keld::view::Camera camera;
        camera.target = {1, 2.5, -3};
        return sceneJson(gathered(), camera);
    }

    template <class Number> static std::string bytes(std::vector<Number> const & numbers)
    {
        std::string result(numbers.size() * sizeof(Number), '\0');
        std::memcpy(result.data(), numbers.data(), result.size());
        return result;
    }

    tests::ScopedPool const m_Pool;
};

using Shorts = std::vector<std::uint16_t>;

TEST_F(SceneData, OfAMeshArePlacesInItsBoxAndIndices)
{
    meshOf({10, 0, -4, 20, 0, -4, 10, 1, -4, 15, 0.25F, -4}, {0, 1, 2, 1, 2, 3});
    EXPECT_EQ(Base64::text(bytes(Shorts{0,     0,     0, 0, 65535, 0, 0, 0, 0, 65535, 0, 0, //
                                        32768, 16384, 0, 0,                                 //
                                        0,     1,     2, 1, 2,     3})),
              meshes());
    EXPECT_THAT(json(), HasSubstr("\"meshes\":[\n[4,6,false,[10,0,-4],[10,1,0]]]"));
}

TEST_F(SceneData, IsFilledUpToFourBytesAfterIndices)
{
    aTriangle();
    aTriangle();
    std::string const one = bytes(Shorts{0, 0, 0, 0, 65535, 0, 0, 0, 0, 65535, 0, 0, 0, 1, 2, 0});
    EXPECT_EQ(Base64::text(one + one), meshes());
}

TEST_F(SceneData, HasNormalsAsPointsOfAnOctahedron)
{
    meshOf({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, {0, 1, 2}, {},
           {0, 0, 2, 1, 0, 0, 0, -1, 0, 0.5F, 0.5F, -1, 0, 0, -1, 0, 0, 0});
    std::vector<std::int16_t> const normals = {0,     0,     32767, 0,     0, -32767,
                                               24575, 24575, 32767, 32767, 0, 0};
    std::string const expected = bytes(Shorts{0, 0, 0, 0, 65535, 0, 0, 0, 0, 65535, 0, 0, //
                                              0, 0, 0, 0, 0,     0, 0, 0, 0, 0,     0, 0}) +
                                 bytes(normals) + bytes(Shorts{0, 1, 2, 0});
    EXPECT_EQ(Base64::text(expected), meshes());
    EXPECT_THAT(json(), HasSubstr("[6,3,true,"));
}

TEST_F(SceneData, HasColoursAsNumbersOfThePalette)
{
    aTriangle({0, 0, 255, 255, 0, 0, 0, 0, 255});
    aTriangle();
    EXPECT_THAT(json(), HasSubstr("\"palette\":[\n255,\n16711680]"));
    EXPECT_EQ(Base64::text(bytes(Shorts{0, 0, 0, 1, 65535, 0, 0, 2, 0, 65535, 0, 1, 0, 1, 2, 0,
                                        0, 0, 0, 0, 65535, 0, 0, 0, 0, 65535, 0, 0, 0, 1, 2, 0})),
              meshes());
}

TEST_F(SceneData, HasAColourOfTheOccurrenceAsZero)
{
    Part * const part = Part::create(0, "part");
    part->addBody(aBody(aTriangle({0, 255, 0, 255, 0, 0, 0, 255, 0})));
    paint(part, Green);
    EXPECT_THAT(json(), HasSubstr("\"palette\":[\n16711680]"));
    EXPECT_EQ(Base64::text(bytes(Shorts{0, 0, 0, 0, 65535, 0, 0, 1, 0, 65535, 0, 0, 0, 1, 2, 0})),
              meshes());
}

TEST_F(SceneData, HasAPaletteOfCoarseColoursWhereThereAreTooMany)
{
    std::vector<float> vertices;
    std::vector<unsigned char> colours;
    for (int i = 0; i < 70000; ++i) {
        vertices.insert(vertices.end(), {static_cast<float>(i % 2), static_cast<float>(i % 3), 0});
        colours.insert(colours.end(),
                       {static_cast<unsigned char>(i), static_cast<unsigned char>(i >> 8),
                        static_cast<unsigned char>(i >> 16)});
    }
    meshOf(vertices, {0, 1, 2}, colours);
    std::string const text = json();
    std::string const palette = text.substr(text.find("palette"), 60);
    EXPECT_THAT(palette, HasSubstr("palette\":[\n0,\n2048,\n4096,"));
    EXPECT_LT(std::count(text.begin(), text.end(), '\n'), 2000);
}

TEST_F(SceneData, HasWideIndicesBeyond65536Vertices)
{
    for (std::size_t const count : {65536U, 65537U}) {
        tests::currentSubPool().clear();
        std::vector<float> vertices(3 * count, 0);
        vertices[3] = vertices[7] = 1;
        int const last = static_cast<int>(count - 1);
        meshOf(vertices, {0, 1, 2, 1, 2, last});
        std::string const expected = count > 65536
                                         ? bytes(std::vector<std::uint32_t>{0, 1, 2, 1, 2, 65536})
                                         : bytes(Shorts{0, 1, 2, 1, 2, 65535});
        std::string places(8 * count, '\0');
        places[8] = places[9] = places[18] = places[19] = '\xff';
        EXPECT_EQ(Base64::text(places + expected), meshes());
    }
}

TEST_F(SceneData, HasThePlacesAndTheCamera)
{
    Part * const part = aPart();
    Assembly * const top = Assembly::create(0, "top");
    paint(place(part, top, 1e10), Red);
    double const quarter[16] = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 0.5, 0, 7, 8, 9, 1};
    place(part, top)->setTransform(quarter);
    std::string const text = json();
    EXPECT_THAT(text, HasSubstr("{\"triangles\":2,\n\"camera\":{\"azimuth\":0,\"elevation\":0,"
                                "\"target\":[1,2.5,-3],\"halfWidth\":1,\"halfHeight\":1,"
                                "\"radius\":1},\n"));
    EXPECT_THAT(text, HasSubstr("\"places\":[\n[0,16711680,[1,0,0],[0,1,0],[0,0,1],[1e+10,0,0]],\n"
                                "[0,10925252,[0,1,0],[-1,0,0],[0,0,0.5],[7,8,9]]]}"));
}

TEST_F(SceneData, FitsAPageUpToItsLimits)
{
    Part * const part = aPart();
    Assembly * const top = Assembly::create(0, "top");
    place(part, top);
    place(part, top);
    aTriangle();
    Scene scene = gathered();
    // Three triangles, two meshes of 24 bytes of vertices and 8 of indices, three places.
    EXPECT_TRUE(fitsPage(scene, {3, 64, 2, 3}));
    EXPECT_FALSE(fitsPage(scene, {2, 64, 2, 3}));
    EXPECT_FALSE(fitsPage(scene, {3, 63, 2, 3}));
    EXPECT_FALSE(fitsPage(scene, {3, 64, 1, 3}));
    EXPECT_FALSE(fitsPage(scene, {3, 64, 2, 2}));
    scene.complete = false;
    EXPECT_FALSE(fitsPage(scene, {3, 64, 2, 3}));
}

} // namespace
