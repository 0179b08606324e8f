#include "view/raster.h"

#include <cstdint>

namespace keld::view {

namespace {

/// Samples along each side of a pixel.
constexpr std::size_t Fineness = 2;

/// Free space around the scene.
constexpr double Margin = 1.06;

using Vector = std::array<float, 3>;

/// `a` with a length of 1, or nothing when it has none.
Vector unit(Vector const & a)
{
    float const square = dot(a, a);
    return square > 0 && square <= std::numeric_limits<float>::max() ? 1 / std::sqrt(square) * a
                                                                     : Vector{0, 0, 0};
}

Vector narrow(Triple const & a)
{
    return {static_cast<float>(a[0]), static_cast<float>(a[1]), static_cast<float>(a[2])};
}

std::uint32_t packed(Vector const & colour)
{
    auto const byte = [](float share) {
        return static_cast<std::uint32_t>(std::clamp(255 * share + 0.5F, 0.0F, 255.0F));
    };
    return byte(colour[0]) | byte(colour[1]) << 8 | byte(colour[2]) << 16 | 0xFF000000U;
}

/// The light that comes from a surface of `colour` with the normal `normal`, which points to the
/// eye: a lamp from the upper left and one at the eye, a sky, and a little gloss. The page's script
/// has the same.
Vector lit(Vector const & colour, Vector const & normal)
{
    constexpr Vector Lamp = {-0.40F, 0.56F, 0.726F};
    constexpr Vector Gloss = {-0.215F, 0.301F, 0.929F}; // half way between the lamp and the eye
    float const lamp = std::max(0.0F, dot(normal, Lamp));
    float const sky = 0.5F + 0.5F * normal[1];
    float gloss = std::max(0.0F, dot(normal, Gloss));
    for (int i = 0; i < 5; ++i)
        gloss *= gloss;
    float const light = 0.36F + 0.16F * sky + 0.4F * lamp + 0.24F * normal[2];
    return light * (0.95F * colour + Vector{0.05F, 0.05F, 0.05F}) + 0.14F * gloss * Vector{1, 1, 1};
}

struct Corner
{
    Vector place;  ///< in samples to the right and down, and toward the eye
    Vector normal; ///< towards the eye's side
    Vector colour;
};

class Raster
{
public:
    Raster(Camera const & camera, std::size_t width, std::size_t height, std::size_t mostSamples)
        : m_Camera(camera), m_Width(width * Fineness), m_Height(height * Fineness),
          m_SamplesLeft(mostSamples), m_Depths(m_Width * m_Height, -Far), m_Colours(m_Depths.size())
    {
        m_Scale = std::min(static_cast<double>(m_Width) / (2 * camera.halfWidth),
                           static_cast<double>(m_Height) / (2 * camera.halfHeight)) /
                  Margin;
    }

    bool add(Mesh const & mesh, Occurrence const & occurrence)
    {
        setPlaces(mesh, occurrence.placement);
        setNormals(mesh, occurrence.placement);
        m_UsualColour = share(occurrence.colour);
        bool complete = true;
        mesh.forEachTriangle([&](std::size_t a, std::size_t b, std::size_t c) {
            complete = complete && addTriangle(mesh, a, b, c);
        });
        return complete;
    }

    Image image() const
    {
        Image image;
        image.width = m_Width / Fineness;
        image.height = m_Height / Fineness;
        image.pixels.reserve(4 * image.width * image.height);
        for (std::size_t y = 0; y < image.height; ++y) {
            for (std::size_t x = 0; x < image.width; ++x)
                addPixel(image.pixels, x, y);
        }
        return image;
    }

private:
    static constexpr float Far = std::numeric_limits<float>::infinity();
    static constexpr float Beyond = 1e6F; ///< the samples of any image

    static Vector share(Colour const & colour)
    {
        return 1 / 255.0F *
               Vector{static_cast<float>(colour.red), static_cast<float>(colour.green),
                      static_cast<float>(colour.blue)};
    }

    void setPlaces(Mesh const & mesh, Placement const & placement)
    {
        Triple const right = m_Scale * m_Camera.right();
        Triple const down = -m_Scale * m_Camera.up();
        Triple const toward = m_Scale * m_Camera.toward();
        Triple const middle = {static_cast<double>(m_Width) / 2, static_cast<double>(m_Height) / 2,
                               0};
        auto const seen = [&](Triple const & direction) {
            return Triple{dot(right, direction), dot(down, direction), dot(toward, direction)};
        };
        Placement const onto = {
            {seen(placement.axes[0]), seen(placement.axes[1]), seen(placement.axes[2])},
            seen(placement.origin - m_Camera.target) + middle};
        m_Places.resize(mesh.vertexCount);
        for (std::size_t i = 0; i < mesh.vertexCount; ++i)
            m_Places[i] = narrow(onto.applied(mesh.vertex(i)));
    }

    void setNormals(Mesh const & mesh, Placement const & placement)
    {
        m_Normals.clear();
        if (mesh.normals == nullptr)
            return;
        std::array<Triple, 3> const axes = placement.normalAxes();
        Placement const turn = {axes, {0, 0, 0}};
        Triple const right = m_Camera.right();
        Triple const up = m_Camera.up();
        Triple const toward = m_Camera.toward();
        double const longest =
            std::max({std::sqrt(dot(axes[0], axes[0])), std::sqrt(dot(axes[1], axes[1])),
                      std::sqrt(dot(axes[2], axes[2])), 1e-300});
        m_Normals.resize(mesh.vertexCount);
        for (std::size_t i = 0; i < mesh.vertexCount; ++i) {
            float const * const normal = mesh.normals + 3 * i;
            Triple const turned = 1 / longest * turn.turned({normal[0], normal[1], normal[2]});
            m_Normals[i] = unit(narrow({dot(right, turned), dot(up, turned), dot(toward, turned)}));
        }
    }

    Corner corner(Mesh const & mesh, std::size_t number, Vector const & side) const
    {
        Corner result = {m_Places[number], side, m_UsualColour};
        if (auto const own = mesh.colour(number))
            result.colour = share(*own);
        if (m_Normals.empty())
            return result;
        Vector const & normal = m_Normals[number];
        float const onSide = dot(normal, side);
        if (onSide != 0)
            result.normal = onSide > 0 ? normal : -1.0F * normal;
        return result;
    }

    /// False when nothing more may be drawn.
    bool addTriangle(Mesh const & mesh, std::size_t a, std::size_t b, std::size_t c)
    {
        Vector const first = m_Places[b] - m_Places[a];
        Vector const second = m_Places[c] - m_Places[a];
        float const area = first[0] * second[1] - first[1] * second[0];
        // Down is the opposite of up, and so are the normals of that system.
        Vector side = unit({first[1] * second[2] - first[2] * second[1],
                            -(first[2] * second[0] - first[0] * second[2]), area});
        if (area == 0 || side[2] == 0)
            return true;
        if (side[2] < 0)
            side = -1.0F * side;
        Corner const corners[3] = {corner(mesh, a, side), corner(mesh, b, side),
                                   corner(mesh, c, side)};
        return fill(corners, area);
    }

    bool fill(Corner const (&corners)[3], float area)
    {
        auto const [low, high] =
            std::minmax({corners[0].place[1], corners[1].place[1], corners[2].place[1]});
        long const firstRow = firstFrom(low);
        long const lastRow = lastUpTo(high, m_Height);
        bool const isPlain =
            corners[0].normal == corners[1].normal && corners[0].normal == corners[2].normal &&
            corners[0].colour == corners[1].colour && corners[0].colour == corners[2].colour;
        std::uint32_t const plain = isPlain ? packed(lit(corners[0].colour, corners[0].normal)) : 0;
        for (long row = firstRow; row <= lastRow; ++row) {
            auto const [first, last] = span(corners, static_cast<float>(row) + 0.5F);
            auto const samples = static_cast<std::size_t>(std::max(0L, last - first + 1)) + 1;
            if (samples > m_SamplesLeft)
                return false;
            m_SamplesLeft -= samples;
            fillRow(corners, area, row, first, last, isPlain ? &plain : nullptr);
        }
        return true;
    }

    /// The samples of a row between the edges of a triangle.
    std::pair<long, long> span(Corner const (&corners)[3], float y) const
    {
        float from = Far;
        float to = -Far;
        for (int i = 0; i < 3; ++i) {
            Vector const & a = corners[i].place;
            Vector const & b = corners[(i + 1) % 3].place;
            if ((a[1] <= y) == (b[1] <= y))
                continue;
            float const x = a[0] + (y - a[1]) / (b[1] - a[1]) * (b[0] - a[0]);
            from = std::min(from, x);
            to = std::max(to, x);
        }
        if (!(from <= to))
            return {0, -1};
        return {firstFrom(from), lastUpTo(to, m_Width)};
    }

    /// The first sample that lies behind an edge.
    static long firstFrom(float edge)
    {
        return std::lround(std::ceil(std::clamp(edge, 0.5F, Beyond) - 0.5F));
    }

    /// The last of `count` samples that lies before an edge.
    static long lastUpTo(float edge, std::size_t count)
    {
        float const last = static_cast<float>(count) - 0.5F;
        return std::lround(std::floor(std::clamp(edge, -Beyond, last) - 0.5F));
    }

    void fillRow(Corner const (&corners)[3], float area, long row, long first, long last,
                 std::uint32_t const * plain)
    {
        Vector const & a = corners[0].place;
        Vector const ab = corners[1].place - a;
        Vector const ac = corners[2].place - a;
        float const y = static_cast<float>(row) + 0.5F - a[1];
        std::size_t const start = static_cast<std::size_t>(row) * m_Width;
        for (long column = first; column <= last; ++column) {
            float const x = static_cast<float>(column) + 0.5F - a[0];
            float const v = std::clamp((x * ac[1] - y * ac[0]) / area, 0.0F, 1.0F);
            float const w = std::clamp((y * ab[0] - x * ab[1]) / area, 0.0F, 1.0F - v);
            float const depth = a[2] + v * ab[2] + w * ac[2];
            std::size_t const sample = start + static_cast<std::size_t>(column);
            if (!(depth > m_Depths[sample]))
                continue;
            m_Depths[sample] = depth;
            m_Colours[sample] = plain != nullptr ? *plain : shade(corners, v, w);
        }
    }

    static std::uint32_t shade(Corner const (&corners)[3], float v, float w)
    {
        float const u = 1 - v - w;
        Vector const normal = u * corners[0].normal + v * corners[1].normal + w * corners[2].normal;
        Vector const colour = u * corners[0].colour + v * corners[1].colour + w * corners[2].colour;
        return packed(lit(colour, unit(normal)));
    }

    void addPixel(std::vector<unsigned char> & pixels, std::size_t x, std::size_t y) const
    {
        std::size_t sums[3] = {0, 0, 0};
        std::size_t covered = 0;
        for (std::size_t i = 0; i < Fineness * Fineness; ++i) {
            std::uint32_t const sample =
                m_Colours[(y * Fineness + i / Fineness) * m_Width + x * Fineness + i % Fineness];
            if (sample == 0)
                continue;
            ++covered;
            for (unsigned channel = 0; channel < 3; ++channel)
                sums[channel] += (sample >> (8 * channel)) & 0xFFU;
        }
        for (std::size_t const sum : sums)
            pixels.push_back(static_cast<unsigned char>(covered > 0 ? sum / covered : 0));
        pixels.push_back(static_cast<unsigned char>(covered * 255 / (Fineness * Fineness)));
    }

    Camera const & m_Camera;
    std::size_t m_Width;
    std::size_t m_Height;
    std::size_t m_SamplesLeft;
    double m_Scale = 1; ///< samples for a unit of length
    std::vector<float> m_Depths;
    std::vector<std::uint32_t> m_Colours; ///< 0 where nothing is

    // Of the mesh that is drawn.
    std::vector<Vector> m_Places;
    std::vector<Vector> m_Normals;
    Vector m_UsualColour = {0, 0, 0};
};

} // namespace

Image draw(Scene const & scene, Camera const & camera, std::size_t width, std::size_t height,
           std::size_t mostSamples)
{
    Raster raster(camera, width, height, mostSamples);
    bool complete = true;
    for (Occurrence const & occurrence : scene.occurrences)
        complete = complete && raster.add(scene.meshes[occurrence.mesh], occurrence);
    Image image = raster.image();
    image.complete = complete;
    return image;
}

} // namespace keld::view
