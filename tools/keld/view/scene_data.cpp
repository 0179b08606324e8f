#include "view/scene_data.h"

#include "numbers.h"

#include <cstdint>
#include <utility>

namespace keld::view {

namespace {

constexpr std::size_t MostColours = 65535;
constexpr std::size_t MostNarrowVertices = 65536;

bool isWide(Mesh const & mesh)
{
    return mesh.vertexCount > MostNarrowVertices;
}

std::size_t indexBytes(Mesh const & mesh)
{
    std::size_t const bytes = mesh.triangles * 3 * (isWide(mesh) ? 4 : 2);
    return (bytes + 3) / 4 * 4;
}

std::size_t bytesOf(Mesh const & mesh)
{
    return mesh.vertexCount * (mesh.normals != nullptr ? 12 : 8) + indexBytes(mesh);
}

/// 0xRRGGBB.
std::size_t numberFor(Colour const & colour)
{
    return std::size_t{colour.red} << 16 | std::size_t{colour.green} << 8 | colour.blue;
}

/// The colours of all vertices. Of more than a palette can hold, the finest shades are lost.
class Palette
{
public:
    explicit Palette(Scene const & scene)
    {
        for (Mesh const & mesh : scene.meshes) {
            for (std::size_t i = 0; mesh.colours != nullptr && i < mesh.vertexCount; ++i) {
                if (auto const colour = mesh.colour(i))
                    add(numberFor(*colour));
            }
        }
        if (m_Colours.size() > MostColours) {
            m_Mask = 0xF8F8F8;
            m_Known.assign(m_Known.size(), false);
            for (std::size_t const colour : std::exchange(m_Colours, {}))
                add(colour & m_Mask);
        }
        std::sort(m_Colours.begin(), m_Colours.end());
    }

    std::vector<std::size_t> const & colours() const { return m_Colours; }

    /// 0 for no colour, else one more than its number.
    std::uint16_t numberOf(std::optional<Colour> const & colour) const
    {
        if (!colour)
            return 0;
        auto const found =
            std::lower_bound(m_Colours.begin(), m_Colours.end(), numberFor(*colour) & m_Mask);
        return static_cast<std::uint16_t>(found - m_Colours.begin() + 1);
    }

private:
    void add(std::size_t colour)
    {
        if (m_Known[colour])
            return;
        m_Known[colour] = true;
        m_Colours.push_back(colour);
    }

    std::vector<bool> m_Known = std::vector<bool>(std::size_t{1} << 24); ///< by number
    std::vector<std::size_t> m_Colours;                                  ///< in order
    std::size_t m_Mask = 0xFFFFFF;
};

std::string array(Triple const & numbers)
{
    return "[" + numberText(numbers[0]) + "," + numberText(numbers[1]) + "," +
           numberText(numbers[2]) + "]";
}

std::string cameraJson(Camera const & camera)
{
    return R"({"azimuth":)" + numberText(camera.azimuth) + R"(,"elevation":)" +
           numberText(camera.elevation) + R"(,"target":)" + array(camera.target) +
           R"(,"halfWidth":)" + numberText(camera.halfWidth) + R"(,"halfHeight":)" +
           numberText(camera.halfHeight) + R"(,"radius":)" + numberText(camera.radius) + "}";
}

/// `items` as an array, each on a line of its own, as `text` gives them.
template <class Items, class Text> std::string arrayOf(Items const & items, Text const & text)
{
    std::string result = "[";
    for (auto const & item : items)
        result += (result.size() > 1 ? ",\n" : "\n") + text(item);
    return result + "]";
}

std::int16_t signedShare(double share)
{
    return static_cast<std::int16_t>(std::lround(32767 * std::clamp(share, -1.0, 1.0)));
}

/// The point of the octahedron |x| + |y| + |z| = 1 in a direction, its lower half turned outward.
std::array<std::int16_t, 2> onOctahedron(float const * normal)
{
    double const sum =
        std::abs(double{normal[0]}) + std::abs(double{normal[1]}) + std::abs(double{normal[2]});
    if (!(sum > 0) || !std::isfinite(sum))
        return {0, 0};
    double const x = normal[0] / sum;
    double const y = normal[1] / sum;
    if (normal[2] >= 0)
        return {signedShare(x), signedShare(y)};
    return {signedShare(std::copysign(1 - std::abs(y), x)),
            signedShare(std::copysign(1 - std::abs(x), y))};
}

std::array<std::uint16_t, 3> inBox(Mesh const & mesh, std::size_t vertex)
{
    std::array<std::uint16_t, 3> result = {0, 0, 0};
    if (!mesh.isPlaced(vertex))
        return result;
    Triple const offset = mesh.vertex(vertex) - mesh.box.low;
    Triple const size = mesh.box.high - mesh.box.low;
    for (std::size_t i = 0; i < 3; ++i) {
        double const share = size[i] > 0 ? std::clamp(offset[i] / size[i], 0.0, 1.0) : 0;
        result[i] = static_cast<std::uint16_t>(std::lround(65535 * share));
    }
    return result;
}

template <class Index> void writeIndices(Mesh const & mesh, Base64 & output)
{
    mesh.forEachTriangle([&](std::size_t a, std::size_t b, std::size_t c) {
        output.write(std::array<Index, 3>{static_cast<Index>(a), static_cast<Index>(b),
                                          static_cast<Index>(c)});
    });
}

} // namespace

bool fitsPage(Scene const & scene, PageLimits const & limits)
{
    std::size_t bytes = 0;
    for (Mesh const & mesh : scene.meshes)
        bytes += bytesOf(mesh);
    return scene.complete && scene.triangles <= limits.triangles && bytes <= limits.bytes &&
           scene.meshes.size() <= limits.meshes && scene.occurrences.size() <= limits.occurrences;
}

std::string sceneJson(Scene const & scene, Camera const & camera)
{
    auto const colour = [](std::size_t number) { return std::to_string(number); };
    auto const mesh = [](Mesh const & m) {
        return "[" + std::to_string(m.vertexCount) + "," + std::to_string(3 * m.triangles) + "," +
               (m.normals != nullptr ? "true" : "false") + "," + array(m.box.low) + "," +
               array(m.box.high - m.box.low) + "]";
    };
    auto const place = [](Occurrence const & o) {
        return "[" + std::to_string(o.mesh) + "," + std::to_string(numberFor(o.colour)) + "," +
               array(o.placement.axes[0]) + "," + array(o.placement.axes[1]) + "," +
               array(o.placement.axes[2]) + "," + array(o.placement.origin) + "]";
    };
    return "{\"triangles\":" + std::to_string(scene.triangles) +
           ",\n\"camera\":" + cameraJson(camera) +
           ",\n\"palette\":" + arrayOf(Palette(scene).colours(), colour) +
           ",\n\"meshes\":" + arrayOf(scene.meshes, mesh) +
           ",\n\"places\":" + arrayOf(scene.occurrences, place) + "}\n";
}

void writeMeshes(Scene const & scene, Base64 & output)
{
    Palette const palette(scene);
    for (Mesh const & mesh : scene.meshes) {
        for (std::size_t i = 0; i < mesh.vertexCount; ++i) {
            output.write(inBox(mesh, i));
            output.write(palette.numberOf(mesh.colour(i)));
        }
        for (std::size_t i = 0; mesh.normals != nullptr && i < mesh.vertexCount; ++i)
            output.write(onOctahedron(mesh.normals + 3 * i));
        if (isWide(mesh))
            writeIndices<std::uint32_t>(mesh, output);
        else
            writeIndices<std::uint16_t>(mesh, output);
        std::size_t const used = mesh.triangles * 3 * (isWide(mesh) ? 4 : 2);
        output.write("\0\0\0", indexBytes(mesh) - used);
    }
    output.end();
}

} // namespace keld::view
