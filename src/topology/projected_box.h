#ifndef KELD_TRANSL_TOPOLOGY_PROJECTED_BOX_H
#define KELD_TRANSL_TOPOLOGY_PROJECTED_BOX_H

#include "geom/placement.h"

#include <array>
#include <vector>

namespace transl_tk {

/// The place of a node in a grid that fills a box, and the numbers of nodes along its axes.
using GridNode = std::array<int, 3>;
using GridSize = std::array<int, 3>;

/// The corners of a quad in order, as numbers of vertices.
using Quad = std::array<int, 4>;

struct SurfaceGrid
{
    std::vector<geom::Triple> vertices; ///< by `surfaceNodeIndex`
    std::vector<Quad> quads;            ///< face outward
};

/// Positions of `count` nodes along one edge of the box from (0, 0, 0) to twice the radii, such
/// that they lie at equal distances on the ellipsoid in the box, seen from its centre.
std::vector<double> sampleAxis(geom::Triple const & radii, std::size_t axis, int count);

/// The number of a node on the surface of the grid: the layer k = 0 in rows, the rings between,
/// each starting at (0, 0, k) and running along j = 0 first, and the last layer in rows.
int surfaceNodeIndex(GridNode const & node, GridSize const & size);

/// The surface of a box with 10 nodes along each axis, projected on a sphere.
SurfaceGrid buildProjectedBox(geom::Triple const & centre, double radius);

/// Two triangles, as three numbers of vertices each, for every quad, parted along its shorter
/// diagonal: the one from the second corner when both are equal.
std::vector<int> splitQuads(SurfaceGrid const & grid);

} // namespace transl_tk

#endif
