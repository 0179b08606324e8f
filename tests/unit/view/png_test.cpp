#include "view/png.h"

#include <gmock/gmock.h>
#include <png.h>

namespace {

using keld::view::Image;
using keld::view::pngOf;

TEST(Png, HoldsTheImage)
{
    Image const image = {3,
                         2,
                         {1, 2, 3, 255, 40, 50, 60, 255, 7, 8, 9,  128, // first row
                          0, 0, 0, 0,   90, 80, 70, 255, 1, 0, 99, 1},
                         true};
    std::string const bytes = pngOf(image);

    png_image read = {};
    read.version = PNG_IMAGE_VERSION;
    ASSERT_NE(0, png_image_begin_read_from_memory(&read, bytes.data(), bytes.size()));
    EXPECT_EQ(3U, read.width);
    EXPECT_EQ(2U, read.height);
    read.format = PNG_FORMAT_RGBA;
    std::vector<unsigned char> pixels(PNG_IMAGE_SIZE(read));
    ASSERT_NE(0, png_image_finish_read(&read, nullptr, pixels.data(), 0, nullptr));
    EXPECT_EQ(image.pixels, pixels);
}

TEST(Png, OfAnImageWithoutPixelsIsRefused)
{
    EXPECT_THROW(pngOf({}), std::runtime_error);
}

} // namespace
