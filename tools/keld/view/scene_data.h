#ifndef KELD_TOOLS_VIEW_SCENE_DATA_H
#define KELD_TOOLS_VIEW_SCENE_DATA_H

#include "view/base64.h"
#include "view/camera.h"

namespace keld::view {

/// How much of a scene a page may hold.
struct PageLimits
{
    std::size_t triangles = 2'000'000; ///< of all occurrences
    std::size_t bytes = 30'000'000;    ///< of all meshes, before they become text
    std::size_t meshes = 10'000;
    std::size_t occurrences = 50'000;
};

/// Whether a page can hold the scene for its script to draw.
bool fitsPage(Scene const & scene, PageLimits const & limits = {});

/// What the page's script has to know besides the meshes, as a JSON object:
///
///   triangles  of all occurrences
///   camera     azimuth, elevation, target, halfWidth, halfHeight, radius
///   palette    colours, each as the number 0xRRGGBB
///   meshes     of each [vertices, indices, whether there are normals, low, size], the last two
///              being the box of its vertices
///   places     of each occurrence [mesh, colour, where the first, second and third axis and the
///              origin go]
std::string sceneJson(Scene const & scene, Camera const & camera);

/// The meshes one behind the other, little endian. Each has of each vertex four unsigned 16-bit
/// numbers: the place as shares of 65535 of the box, and the colour, which is 0 for that of the
/// occurrence and else one more than a number in the palette. Then the normals, two signed 16-bit
/// numbers each, the place on the octahedron as shares of 32767. Then the indices, unsigned 16-bit
/// numbers, or 32-bit where there are more than 65536 vertices; and nothing up to a multiple of
/// four bytes.
void writeMeshes(Scene const & scene, Base64 & output);

} // namespace keld::view

#endif
