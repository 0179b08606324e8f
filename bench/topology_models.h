#ifndef KELD_BENCH_TOPOLOGY_MODELS_H
#define KELD_BENCH_TOPOLOGY_MODELS_H

#include <array>
#include <vector>

namespace bench {

using Triple = std::array<double, 3>;

/// A torus of quadrilateral faces: as many vertices as faces and twice as many edges, each of them
/// shared, since the net is closed in both directions. Planes and spline surfaces take turns.
struct QuadNet
{
    static constexpr int Degree = 3;
    static constexpr int KnotCount = 2;
    static constexpr int PointsADirection = 4;
    static constexpr int PointCount = PointsADirection * PointsADirection;

    struct Plane
    {
        Triple location, first, second;
    };
    /// Control points of a bicubic patch, which is not rational.
    using Patch = std::array<double, 3UL * PointCount>;
    struct Line
    {
        Triple point, direction;
        double length;
    };
    struct Side
    {
        int edge;
        bool sense;
    };

    explicit QuadNet(int faceCount);

    int faces() const { return m_Across * m_Around; }

    /// Index of a vertex or face; the indices wrap round.
    int at(int across, int around) const
    {
        return (across % m_Across) * m_Around + around % m_Around;
    }
    /// Vertices at both ends of edge 2 * n and 2 * n + 1, which start at vertex n.
    std::array<int, 2> ends(int edge) const;
    std::array<Side, 4> sides(int face) const;
    static bool isPlane(int face) { return face % 2 == 0; }

    std::vector<Triple> m_Vertices;
    std::vector<Line> m_Lines; ///< one an edge
    std::vector<Plane> m_Planes;
    std::vector<Patch> m_Patches;

private:
    int m_Across;
    int m_Around;
};

constexpr double PatchKnots[QuadNet::KnotCount] = {0, 1};
constexpr int PatchMultiplicities[QuadNet::KnotCount] = {QuadNet::Degree + 1, QuadNet::Degree + 1};

/// The net of about that many faces, made at the first call.
QuadNet const & quadNet(int faces);

/// Makes the net in the current sub-pool with the bare calls, in the order of the stream: one body,
/// one shell, a loop a face, four fins a loop, no UV curves.
void createQuadNet(int faces);

/// A wavy grid of triangles that share their vertices, as many as half the triangles.
struct TriangleGrid
{
    explicit TriangleGrid(int triangles);

    std::vector<float> m_Vertices; ///< three numbers each
    std::vector<int> m_Indices;    ///< three a triangle
};

TriangleGrid const & triangleGrid(int triangles);

/// Makes the grid in the current sub-pool: one strip with indices, without normals and colours.
void createTriangleGrid(int triangles);

} // namespace bench

#endif
