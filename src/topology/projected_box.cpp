#include "topology/projected_box.h"

#include <cmath>
#include <utility>

namespace transl_tk {

namespace {

using geom::Triple;

constexpr int NodesPerAxis = 10;

/// Fine steps for each node but one: they cover half an edge.
constexpr int FineSteps = 16;

double squaredDistance(Triple const & a, Triple const & b)
{
    Triple const d = {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
    return d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
}

/// The direction from `origin` to `point`; their difference when that has no length.
Triple directionTo(Triple const & point, Triple const & origin)
{
    Triple direction = {point[0] - origin[0], point[1] - origin[1], point[2] - origin[2]};
    double const squared = squaredDistance(point, origin);
    if (squared != 0)
        for (double & component : direction)
            component /= std::sqrt(squared);
    return direction;
}

/// Where a point of the box comes to lie on the ellipsoid whose centre is at `radii`.
Triple projected(Triple const & point, Triple const & radii)
{
    Triple const u = directionTo(point, radii);
    return {radii[0] + radii[0] * u[0], radii[1] + radii[1] * u[1], radii[2] + radii[2] * u[2]};
}

/// Two opposite sides of the grid, and the axes along which their quads are counted.
struct Sides
{
    std::size_t normal;
    std::size_t u; ///< runs faster than `v`
    std::size_t v;
    bool firstIsTurned; ///< otherwise the quads of the second side are
};

constexpr Sides AllSides[] = {{2, 0, 1, true}, {1, 0, 2, false}, {0, 1, 2, true}};

void addQuads(std::vector<Quad> & quads, Sides const & sides, bool first, GridSize const & size)
{
    for (int v = 0; v < size[sides.v] - 1; ++v)
        for (int u = 0; u < size[sides.u] - 1; ++u) {
            auto const corner = [&](int alongU, int alongV) {
                GridNode node{};
                node[sides.normal] = first ? 0 : size[sides.normal] - 1;
                node[sides.u] = u + alongU;
                node[sides.v] = v + alongV;
                return surfaceNodeIndex(node, size);
            };
            Quad quad = {corner(0, 0), corner(1, 0), corner(1, 1), corner(0, 1)};
            if (first == sides.firstIsTurned)
                std::swap(quad[1], quad[3]);
            quads.push_back(quad);
        }
}

} // namespace

std::vector<double> sampleAxis(Triple const & radii, std::size_t axis, int count)
{
    double const radius = radii[axis];
    int const fineCount = FineSteps * (count - 1);
    double const fineStep = radius / fineCount;
    auto const index = [](int number) { return static_cast<std::size_t>(number); };
    std::vector<double> parameters(index(fineCount + 1));
    std::vector<double> lengths(index(fineCount + 1));
    Triple point{};
    Triple before = projected(point, radii);
    for (std::size_t i = 1; i < lengths.size(); ++i) {
        point[axis] = static_cast<double>(i) * fineStep;
        Triple const here = projected(point, radii);
        parameters[i] = parameters[i - 1] + fineStep;
        lengths[i] = lengths[i - 1] + std::sqrt(squaredDistance(here, before));
        before = here;
    }

    std::vector<double> nodes(index(count));
    double const spacing = 2 * lengths.back() / (count - 1);
    double target = spacing;
    std::size_t found = 1;
    // On an edge without length every fine step reaches the target.
    for (std::size_t i = 1; i < lengths.size() - 1 && found < nodes.size(); ++i) {
        if (!(lengths[i] >= target))
            continue;
        double const length = lengths[i] - lengths[i - 1];
        double const part = length != 0 ? (target - lengths[i - 1]) / length : 0;
        nodes[found++] = (parameters[i] - parameters[i - 1]) * part + parameters[i - 1];
        target += spacing;
    }

    std::size_t const middle = nodes.size() / 2;
    std::size_t mirror = middle;
    if (count % 2 == 0) {
        nodes[middle] = 2 * radius - nodes[found - 1];
        mirror = middle - 1;
    } else if (found == middle) {
        nodes[middle] = radius;
    }
    for (std::size_t i = middle + 1; i < nodes.size(); ++i, --mirror)
        nodes[i] = nodes[i - 1] + nodes[mirror] - nodes[mirror - 1];
    return nodes;
}

int surfaceNodeIndex(GridNode const & node, GridSize const & size)
{
    auto const [i, j, k] = node;
    auto const [nx, ny, nz] = size;
    if (k == 0)
        return nx * j + i;
    if (k == nz - 1)
        return (ny + j) * nx + i + (nx - 2 + ny) * (2 * nz - 4);
    if (j == 0)
        return ny * nx + (2 * (ny + nx) - 4) * (k - 1) + i;
    if (i == nx - 1)
        return (2 * (ny + nx) - 4) * (k - 1) + j + (ny + 1) * nx - 1;
    if (j != ny - 1)
        return ny * nx + k * (ny + nx - 2) * 2 - j;
    return (nx + 1) * ny + ((ny + nx - 2) * (k - 1) + nx) * 2 - i - 3;
}

SurfaceGrid buildProjectedBox(Triple const & centre, double radius)
{
    constexpr GridSize Size = {NodesPerAxis, NodesPerAxis, NodesPerAxis};
    constexpr int Last = NodesPerAxis - 1;
    constexpr int NodeCount =
        2 * ((NodesPerAxis - 2 + NodesPerAxis) * (NodesPerAxis - 2) + NodesPerAxis * NodesPerAxis);
    Triple const radii = {radius, radius, radius};
    std::vector<double> const axes[] = {sampleAxis(radii, 0, NodesPerAxis),
                                        sampleAxis(radii, 1, NodesPerAxis),
                                        sampleAxis(radii, 2, NodesPerAxis)};
    auto const isOnSurface = [](int place) { return place == 0 || place == Last; };

    SurfaceGrid grid;
    grid.vertices.resize(NodeCount);
    for (int k = 0; k < NodesPerAxis; ++k)
        for (int j = 0; j < NodesPerAxis; ++j)
            for (int i = 0; i < NodesPerAxis; ++i) {
                if (!isOnSurface(i) && !isOnSurface(j) && !isOnSurface(k))
                    continue;
                Triple const d = directionTo({axes[0][static_cast<std::size_t>(i)],
                                              axes[1][static_cast<std::size_t>(j)],
                                              axes[2][static_cast<std::size_t>(k)]},
                                             radii);
                auto const number = static_cast<std::size_t>(surfaceNodeIndex({i, j, k}, Size));
                grid.vertices[number] = {radius * d[0] + centre[0], radius * d[1] + centre[1],
                                         radius * d[2] + centre[2]};
            }

    grid.quads.reserve(std::size_t{6} * Last * Last);
    for (Sides const & sides : AllSides) {
        addQuads(grid.quads, sides, true, Size);
        addQuads(grid.quads, sides, false, Size);
    }
    return grid;
}

std::vector<int> splitQuads(SurfaceGrid const & grid)
{
    std::vector<int> triangles;
    triangles.reserve(6 * grid.quads.size());
    auto const vertex = [&](int number) -> Triple const & {
        return grid.vertices[static_cast<std::size_t>(number)];
    };
    for (auto const & [a, b, c, d] : grid.quads) {
        if (squaredDistance(vertex(b), vertex(d)) > squaredDistance(vertex(a), vertex(c)))
            triangles.insert(triangles.end(), {a, b, c, a, c, d});
        else
            triangles.insert(triangles.end(), {a, b, d, b, c, d});
    }
    return triangles;
}

} // namespace transl_tk
