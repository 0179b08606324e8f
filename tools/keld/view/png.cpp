#include "view/png.h"

#include <png.h>
#include <stdexcept>

namespace keld::view {

std::string pngOf(Image const & image)
{
    png_image header = {};
    header.version = PNG_IMAGE_VERSION;
    header.width = static_cast<png_uint_32>(image.width);
    header.height = static_cast<png_uint_32>(image.height);
    header.format = PNG_FORMAT_RGBA;
    std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(header), '\0');
    png_alloc_size_t size = bytes.size();
    if (png_image_write_to_memory(&header, bytes.data(), &size, 0, image.pixels.data(), 0,
                                  nullptr) == 0)
        throw std::runtime_error(
            "The picture of the model could not be made: " + std::string(header.message) + ".");
    bytes.resize(size);
    return bytes;
}

} // namespace keld::view
