#include "view/camera.h"

#include <numbers>

namespace keld::view {

namespace {

constexpr double Degree = std::numbers::pi / 180;

/// `size`, or 1 for nothing.
double usable(double size)
{
    return size > 0 ? size : 1;
}

} // namespace

Triple Camera::right() const
{
    return {-std::sin(azimuth), std::cos(azimuth), 0};
}

Triple Camera::up() const
{
    return cross(toward(), right());
}

Triple Camera::toward() const
{
    return {std::cos(elevation) * std::cos(azimuth), std::cos(elevation) * std::sin(azimuth),
            std::sin(elevation)};
}

Camera wholeScene(Scene const & scene)
{
    Camera camera;
    camera.azimuth = -55 * Degree;
    camera.elevation = 28 * Degree;
    Triple const right = camera.right();
    Triple const up = camera.up();
    Triple const toward = camera.toward();

    Box seen;
    for (Occurrence const & occurrence : scene.occurrences) {
        Mesh const & mesh = scene.meshes[occurrence.mesh];
        mesh.forEachTriangle([&](std::size_t a, std::size_t b, std::size_t c) {
            for (std::size_t const corner : {a, b, c}) {
                Triple const point = occurrence.placement.applied(mesh.vertex(corner));
                seen.add({dot(right, point), dot(up, point), dot(toward, point)});
            }
        });
    }
    Triple const middle = 0.5 * (seen.low + seen.high);
    camera.target = middle[0] * right + middle[1] * up + middle[2] * toward;
    double const largest = std::max(
        {seen.high[0] - seen.low[0], seen.high[1] - seen.low[1], seen.high[2] - seen.low[2]});
    // What is seen from its edge shows something once it is turned.
    camera.halfWidth = usable(std::max(seen.high[0] - seen.low[0], 1e-3 * largest) / 2);
    camera.halfHeight = usable(std::max(seen.high[1] - seen.low[1], 1e-3 * largest) / 2);
    camera.radius = 0;
    for (unsigned i = 0; i < 8; ++i) {
        Triple const offset = scene.box.corner(i) - camera.target;
        camera.radius = std::max(camera.radius, std::sqrt(dot(offset, offset)));
    }
    camera.radius = usable(camera.radius);
    return camera;
}

} // namespace keld::view
