#ifndef KELD_TOOLS_VIEW_RASTER_H
#define KELD_TOOLS_VIEW_RASTER_H

#include "view/camera.h"

#include <vector>

namespace keld::view {

/// Rows from the top, four bytes a pixel: red, green, blue, and opacity, which is 0 where nothing
/// is.
struct Image
{
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<unsigned char> pixels;
    bool complete = true; ///< whether all was drawn
};

/// Draws a scene, both sides of each triangle lit, with smooth edges. Where a mesh has normals,
/// they are what is lit, whichever side they point to.
///
/// Ends when it has looked at `mostSamples` samples, of which a pixel has four; the image is then
/// not complete.
Image draw(Scene const & scene, Camera const & camera, std::size_t width, std::size_t height,
           std::size_t mostSamples = 1'000'000'000);

} // namespace keld::view

#endif
