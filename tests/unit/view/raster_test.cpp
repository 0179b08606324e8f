#include "unit/view/view_models.h"
#include "view/raster.h"

#include <gmock/gmock.h>
#include <numbers>

namespace {

using namespace tests;
using keld::view::Camera;
using keld::view::draw;
using keld::view::Image;
using keld::view::Triple;
using keld::view::wholeScene;

struct Pixel
{
    int red, green, blue, opacity;

    bool operator==(Pixel const &) const = default;
};

Pixel at(Image const & image, std::size_t x, std::size_t y)
{
    unsigned char const * const pixel = image.pixels.data() + 4 * (y * image.width + x);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

std::size_t covered(Image const & image)
{
    std::size_t count = 0;
    for (std::size_t i = 3; i < image.pixels.size(); i += 4)
        count += image.pixels[i] > 0;
    return count;
}

bool isRed(Pixel const & pixel)
{
    return pixel.opacity == 255 && pixel.red > 2 * pixel.green && pixel.red > 2 * pixel.blue;
}

bool isBlue(Pixel const & pixel)
{
    return pixel.opacity == 255 && pixel.blue > 2 * pixel.green && pixel.blue > 2 * pixel.red;
}

/// Looks down the third axis at a square of 2 by 2 around the origin, the first axis to the right.
Camera fromAbove()
{
    Camera camera;
    camera.azimuth = -std::numbers::pi / 2;
    camera.elevation = std::numbers::pi / 2;
    camera.halfWidth = camera.halfHeight = 1;
    return camera;
}

class Drawing : public testing::Test
{
protected:
    /// A square around the origin, half as wide as what is seen, in one colour.
    static TriStrip * square(float height, Colour const & colour,
                             std::vector<float> const & normals = {})
    {
        std::vector<unsigned char> colours;
        for (int i = 0; i < 4; ++i)
            colours.insert(colours.end(), {colour.red, colour.green, colour.blue});
        return meshOf(
            {-0.5F, -0.5F, height, 0.5F, -0.5F, height, 0.5F, 0.5F, height, -0.5F, 0.5F, height},
            {0, 1, 2, 0, 2, 3}, colours, normals);
    }

    static Image seen(Camera const & camera = fromAbove())
    {
        return draw(gathered(), camera, 40, 40);
    }

    tests::ScopedPool const m_Pool;
};

TEST_F(Drawing, ShowsARedSquareInTheMiddleAndNothingAround)
{
    square(0, Red);
    Image const image = seen();
    EXPECT_EQ(40U, image.width);
    EXPECT_EQ(40U, image.height);
    ASSERT_EQ(std::size_t{4 * 40 * 40}, image.pixels.size());
    EXPECT_TRUE(image.complete);
    for (std::size_t const x : {12U, 20U, 27U}) {
        EXPECT_TRUE(isRed(at(image, x, 20))) << x;
        EXPECT_TRUE(isRed(at(image, 20, x))) << x;
    }
    for (std::size_t const x : {0U, 9U, 30U, 39U}) {
        EXPECT_EQ((Pixel{0, 0, 0, 0}), at(image, x, 20)) << x;
        EXPECT_EQ((Pixel{0, 0, 0, 0}), at(image, 20, x)) << x;
    }
}

TEST_F(Drawing, HasTheFirstAxisToTheRightAndTheSecondUpward)
{
    meshOf({0.2F, 0.2F, 0, 0.8F, 0.2F, 0, 0.2F, 0.8F, 0}, {0, 1, 2}, {});
    Image const image = seen();
    EXPECT_EQ(255, at(image, 26, 14).opacity);
    EXPECT_EQ(0, at(image, 14, 14).opacity);
    EXPECT_EQ(0, at(image, 26, 26).opacity);
    EXPECT_EQ(0, at(image, 14, 26).opacity);
}

TEST_F(Drawing, CoversEachPixelOfTheTwoTrianglesOfASquareOnce)
{
    square(0, Red);
    Image const image = seen();
    // Half of 40, less the margin of six percent: 18.87 pixels.
    EXPECT_EQ(20U * 20U, covered(image));
    Pixel const middle = at(image, 20, 20);
    for (std::size_t y = 11; y < 29; ++y) {
        for (std::size_t x = 11; x < 29; ++x)
            EXPECT_EQ(middle, at(image, x, y)) << x << " " << y;
    }
}

TEST_F(Drawing, ShowsWhatIsNearerWhateverTheOrder)
{
    square(0.5F, Red);
    square(0, Blue);
    EXPECT_TRUE(isRed(at(seen(), 20, 20)));
    Camera camera = fromAbove();
    camera.elevation = -std::numbers::pi / 2;
    EXPECT_TRUE(isBlue(at(seen(camera), 20, 20)));
}

TEST_F(Drawing, LightsBothSidesAlike)
{
    square(0, Red);
    Camera camera = fromAbove();
    Pixel const above = at(seen(), 20, 20);
    camera.elevation = -std::numbers::pi / 2;
    EXPECT_EQ(above, at(seen(camera), 20, 20));
}

TEST_F(Drawing, LightsByTheNormals)
{
    square(0, White);
    Pixel const flat = at(seen(), 20, 20);
    tests::currentSubPool().clear();
    square(0, White, {0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1});
    EXPECT_EQ(flat, at(seen(), 20, 20));
    tests::currentSubPool().clear();
    square(0, White, {-1, 0, 1, 1, 0, 1, 1, 0, 1, -1, 0, 1});
    Image const image = seen();
    // The lamp stands on the left.
    EXPECT_GT(at(image, 12, 20).red, at(image, 27, 20).red + 30);
    EXPECT_GT(at(image, 20, 20).red, at(image, 27, 20).red + 30);
}

TEST_F(Drawing, LightsNormalsOfTheWrongSideAndOfAnyLengthAlike)
{
    square(0, White, {-1, 0, 1, 1, 0, 1, 1, 0, 1, -1, 0, 1});
    Image const right = seen();
    tests::currentSubPool().clear();
    square(0, White, {2, 0, -2, -1, 0, -1, -9, 0, -9, 1, 0, -1});
    EXPECT_EQ(right.pixels, seen().pixels);
}

TEST_F(Drawing, LightsWithoutNormalsThatAreNone)
{
    square(0, White);
    Image const flat = seen();
    tests::currentSubPool().clear();
    float const none = std::numeric_limits<float>::quiet_NaN();
    float const endless = std::numeric_limits<float>::infinity();
    square(0, White, {0, 0, 0, none, 0, 1, endless, 0, 0, 0, 0, 0});
    EXPECT_EQ(flat.pixels, seen().pixels);
}

TEST_F(Drawing, TurnsNormalsWithTheirPlaces)
{
    // A square that stands upright, laid down by its instance.
    std::vector<float> const normals = {1, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0};
    Part * const part = Part::create(0, "part");
    part->addTriStrip(meshOf({0, -0.5F, -0.5F, 0, 0.5F, -0.5F, 0, 0.5F, 0.5F, 0, -0.5F, 0.5F},
                             {0, 1, 2, 0, 2, 3}, {}, normals));
    Instance * const instance = place(part, Assembly::create(0, "top"));
    double const lay[16] = {0, 0, 1, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1};
    instance->setTransform(lay);
    Pixel const turned = at(seen(), 20, 20);
    // Mirrored and pulled apart it is as flat.
    double const mirrored[16] = {0, 0, -3, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1};
    instance->setTransform(mirrored);
    EXPECT_EQ(turned, at(seen(), 20, 20));
    tests::currentSubPool().clear();
    square(0, keld::view::UsualColour);
    EXPECT_EQ(at(seen(), 20, 20), turned);
}

TEST_F(Drawing, KeepsNormalsUprightOnWhatIsPulledApart)
{
    auto const seenSlope = [](std::vector<float> const & normals) {
        tests::currentSubPool().clear();
        Part * const part = Part::create(0, "part");
        part->addTriStrip(
            meshOf({-0.3F, -0.5F, 0.3F, 0.3F, -0.5F, -0.3F, 0.3F, 0.5F, -0.3F, -0.3F, 0.5F, 0.3F},
                   {0, 1, 2, 0, 2, 3}, {}, normals));
        double const wide[16] = {2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        place(part, Assembly::create(0, "top"))->setTransform(wide);
        return at(seen(), 20, 20);
    };
    Pixel const flat = seenSlope({});
    Pixel const smooth = seenSlope({1, 0, 1, 1, 0, 1, 1, 0, 1, 1, 0, 1});
    EXPECT_NEAR(flat.red, smooth.red, 1);
    EXPECT_NEAR(flat.blue, smooth.blue, 1);
}

TEST_F(Drawing, ShowsEachPlaceInItsColour)
{
    Part * const part = Part::create(0, "part");
    part->addTriStrip(meshOf({-0.2F, -0.2F, 0, 0.2F, -0.2F, 0, 0, 0.4F, 0}, {0, 1, 2}));
    Assembly * const top = Assembly::create(0, "top");
    paint(place(part, top, -0.5), Red);
    paint(place(part, top, 0.5), Blue);
    Image const image = seen();
    EXPECT_TRUE(isRed(at(image, 10, 20)));
    EXPECT_TRUE(isBlue(at(image, 29, 20)));
    EXPECT_EQ(0, at(image, 20, 20).opacity);
}

TEST_F(Drawing, BlendsTheColoursOfTheCorners)
{
    meshOf({-0.8F, -0.8F, 0, 0.8F, -0.8F, 0, 0, 0.8F, 0}, {0, 1, 2},
           {255, 0, 0, 0, 0, 255, 0, 255, 0});
    Image const image = seen();
    EXPECT_TRUE(isRed(at(image, 7, 34)));
    EXPECT_TRUE(isBlue(at(image, 32, 34)));
    Pixel const between = at(image, 20, 34);
    EXPECT_NEAR(between.red, between.blue, 12);
}

TEST_F(Drawing, HasSmoothEdges)
{
    meshOf({-0.9F, -0.9F, 0, 0.9F, -0.9F, 0, 0.9F, 0.3F, 0}, {0, 1, 2});
    Image const image = seen();
    std::size_t partial = 0;
    for (std::size_t i = 3; i < image.pixels.size(); i += 4)
        partial += image.pixels[i] > 0 && image.pixels[i] < 255;
    EXPECT_LT(10U, partial);
}

TEST_F(Drawing, EndsAtTheLimitOfSamples)
{
    square(0, Red);
    Image const image = draw(gathered(), fromAbove(), 40, 40, 500);
    EXPECT_FALSE(image.complete);
    EXPECT_LT(0U, covered(image));
    EXPECT_GT(20U * 20U, covered(image));
}

TEST_F(Drawing, DrawsWhatReachesFarBeyondTheImage)
{
    meshOf({-1e6F, -1e6F, 0, 1e6F, -1e6F, 0, 0, 1e6F, 0}, {0, 1, 2});
    Image const image = seen();
    EXPECT_EQ(40U * 40U, covered(image));
}

TEST_F(Drawing, ShowsAWholeSceneWithAMarginAroundIt)
{
    meshOf({1000, 0, 0, 1010, 0, 0, 1000, 10, 0, 1000, 0, 5}, {0, 1, 2, 0, 1, 3, 0, 2, 3, 1, 2, 3});
    Scene const scene = gathered();
    Image const image = draw(scene, wholeScene(scene), 80, 50);
    std::size_t left = 80;
    std::size_t right = 0;
    std::size_t top = 50;
    std::size_t bottom = 0;
    for (std::size_t y = 0; y < 50; ++y) {
        for (std::size_t x = 0; x < 80; ++x) {
            if (at(image, x, y).opacity == 0)
                continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
    }
    EXPECT_NEAR(79.0, static_cast<double>(left + right), 1);
    EXPECT_NEAR(49.0, static_cast<double>(top + bottom), 1);
    bool const fillsWidth = right - left > 72;
    bool const fillsHeight = bottom - top > 44;
    EXPECT_TRUE(fillsWidth || fillsHeight);
    EXPECT_LT(0U, left);
    EXPECT_LT(0U, top);
}

TEST_F(Drawing, ShowsScenesOfAnySize)
{
    for (float const size : {1e-30F, 1e-6F, 1.0F, 1e9F, 9e29F}) {
        tests::currentSubPool().clear();
        meshOf({0, 0, 0, size, 0, 0, 0, size, 0}, {0, 1, 2});
        Scene const scene = gathered();
        EXPECT_LT(500U, covered(draw(scene, wholeScene(scene), 80, 50))) << size;
    }
}

TEST_F(Drawing, OfASceneWithoutExtentIsEmpty)
{
    meshOf({7, 7, 7, 7, 7, 7, 7, 7, 7}, {0, 1, 2});
    Scene const scene = gathered();
    EXPECT_EQ(1U, scene.triangles);
    EXPECT_EQ(0U, covered(draw(scene, wholeScene(scene), 80, 50)));
}

} // namespace
