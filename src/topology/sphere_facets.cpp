#include "topology/sphere_facets.h"

#include "geom_traits/ggm_vector.h"
#include "topology/projected_box.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace transl_tk {

namespace {

using Normal = ggm::Vector<3, float>;

/// Fills the arrays of a mesh vertex by vertex.
class VertexFiller
{
public:
    /// Sizes the arrays of `data` for `count` vertices with normal and colour.
    VertexFiller(TriStripData & data, int count, unsigned char const (&colour)[3])
        : m_Data(data), m_Colour(colour)
    {
        data.vertexCount = data.normalCount = count;
        data.vertices = geom::Array<float>(3LL * count);
        data.normals = geom::Array<float>(3LL * count);
        data.colours = geom::Array<unsigned char>(3LL * count);
    }

    void add(float const (&vertex)[3], Normal const & normal)
    {
        std::copy_n(vertex, 3, m_Data.vertices.data() + m_At);
        std::copy_n(normal.components, 3, m_Data.normals.data() + m_At);
        std::copy_n(m_Colour, 3, m_Data.colours.data() + m_At);
        m_At += 3;
    }

private:
    TriStripData & m_Data;
    unsigned char const (&m_Colour)[3];
    std::size_t m_At = 0;
};

/// Bands from pole to pole. Radii beyond the limit are alike: their vertices are too many.
long long bandCount(double radius)
{
    return std::max(2 * static_cast<long long>(std::clamp(radius, 0.0, 1e9)), 10LL);
}

void fillLatitudeStrips(TriStripData & data, double const (&centre)[3], double radius,
                        unsigned char const (&colour)[3])
{
    constexpr double Pi = 3.141592653589793;
    constexpr double TwoPi = 6.283185307179586;
    long long const bands = bandCount(radius);
    long long const positions = 2 * bands + 2;
    long long const vertexCount = bands * positions + 2 * bands - 2;
    if (vertexCount > INT_MAX)
        return;
    VertexFiller filler(data, static_cast<int>(vertexCount), colour);
    double const thetaStep = Pi / static_cast<double>(bands);
    double const phiStep = TwoPi / static_cast<double>(bands);
    double theta = thetaStep;
    for (long long band = 0; band < bands; ++band) {
        double phi = -phiStep;
        for (long long position = 0; position < positions; ++position) {
            if (position % 2 == 0) {
                theta -= thetaStep;
                phi += phiStep;
            } else {
                theta += thetaStep;
            }
            auto const z = static_cast<float>(std::cos(theta) * radius);
            auto const y = static_cast<float>(std::sin(phi) * radius * std::sin(theta));
            auto const x = static_cast<float>(std::cos(phi) * radius * std::sin(theta));
            float const vertex[] = {static_cast<float>(x + centre[0]),
                                    static_cast<float>(y + centre[1]),
                                    static_cast<float>(z + centre[2])};
            Normal normal{{x, y, z}};
            normal.unit();
            filler.add(vertex, normal);
            // Triangles without area lead from the end of a band to the start of the next one.
            if ((band > 0 && position == 0) || (band < bands - 1 && position == positions - 1))
                filler.add(vertex, normal);
        }
        theta += thetaStep;
    }
}

void fillProjectedBox(TriStripData & data, double const (&centre)[3], double radius,
                      unsigned char const (&colour)[3])
{
    SurfaceGrid const box = buildProjectedBox(std::to_array(centre), radius);
    VertexFiller filler(data, static_cast<int>(box.vertices.size()), colour);
    for (geom::Triple const & exact : box.vertices) {
        float vertex[3];
        Normal normal;
        for (std::size_t i = 0; i < 3; ++i) {
            vertex[i] = static_cast<float>(exact[i]);
            normal.components[i] = static_cast<float>(exact[i] - centre[i]);
        }
        normal.unit();
        filler.add(vertex, normal);
    }
    std::vector<int> const triangles = splitQuads(box);
    data.indexCount = static_cast<int>(triangles.size());
    data.indices = geom::Array<int>(data.indexCount);
    data.indices.copyFrom(triangles.data());
}

} // namespace

TriStripData sphereFacets(double const (&centre)[3], double radius,
                          unsigned char const (&colour)[3], TriStrip::Type type, bool flag)
{
    TriStripData data;
    data.flag = flag;
    if (std::isfinite(radius)) {
        if (type == TriStrip::LatitudeStrips)
            fillLatitudeStrips(data, centre, radius, colour);
        else if (type == TriStrip::ProjectedBox)
            fillProjectedBox(data, centre, radius, colour);
    }
    return data;
}

} // namespace transl_tk
