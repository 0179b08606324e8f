#include "topology_models.h"

#include <keld-transl/geom/bspline_surface.h>
#include <keld-transl/geom/line.h>
#include <keld-transl/geom/plane.h>
#include <keld-transl/geom/point.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/tri_strip.h>
#include <keld-transl/topology/vertex.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace bench {

namespace {

constexpr double Turn = 2 * 3.14159265358979323846;

/// Directions of a net of `faces` faces, 5 to 8 apart, so that whole nets come out for the sizes
/// that are measured.
int across(int faces)
{
    return static_cast<int>(std::sqrt(faces * 5.0 / 8.0));
}

using Numbers = double const (&)[3];

Numbers numbers(Triple const & triple)
{
    return *reinterpret_cast<double const(*)[3]>(triple.data());
}

Triple onTorus(double u, double v)
{
    double const radius = 1000 + 300 * std::cos(Turn * u);
    return {radius * std::cos(Turn * v), radius * std::sin(Turn * v), 300 * std::sin(Turn * u)};
}

Triple between(Triple const & from, Triple const & to)
{
    return {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
}

/// Scales a vector to length 1 and returns the length that it had.
double normalize(Triple & vector)
{
    double const length = std::hypot(vector[0], vector[1], vector[2]);
    for (double & value : vector)
        value /= length;
    return length;
}

/// Takes from `vector` what goes along `axis`, a unit vector, and normalizes the rest.
void makeOrthogonal(Triple & vector, Triple const & axis)
{
    double const along = vector[0] * axis[0] + vector[1] * axis[1] + vector[2] * axis[2];
    for (std::size_t i = 0; i < 3; ++i)
        vector[i] -= along * axis[i];
    normalize(vector);
}

template <class Model> Model const & modelOf(int size)
{
    static std::map<int, Model> models;
    return models.try_emplace(size, size).first->second;
}

} // namespace

QuadNet::QuadNet(int faceCount) : m_Across(across(faceCount)), m_Around(faceCount / m_Across)
{
    int const count = faces();
    for (int i = 0; i < m_Across; ++i)
        for (int j = 0; j < m_Around; ++j)
            m_Vertices.push_back(onTorus(double(i) / m_Across, double(j) / m_Around));
    for (int edge = 0; edge < 2 * count; ++edge) {
        auto const [start, end] = ends(edge);
        Triple const & point = m_Vertices[static_cast<std::size_t>(start)];
        Triple direction = between(point, m_Vertices[static_cast<std::size_t>(end)]);
        double const length = normalize(direction);
        m_Lines.push_back({point, direction, length});
    }
    for (int face = 0; face < count; ++face) {
        int const i = face / m_Around;
        int const j = face % m_Around;
        if (isPlane(face)) {
            auto const line = [&](int direction) -> Line const & {
                return m_Lines[static_cast<std::size_t>(2 * face + direction)];
            };
            Plane plane{line(0).point, line(0).direction, line(1).direction};
            makeOrthogonal(plane.second, plane.first);
            m_Planes.push_back(plane);
        } else {
            Patch patch;
            auto * target = patch.begin();
            for (int u = 0; u < PointsADirection; ++u)
                for (int v = 0; v < PointsADirection; ++v) {
                    Triple const point =
                        onTorus((i + u / 3.0) / m_Across, (j + v / 3.0) / m_Around);
                    target = std::copy(point.begin(), point.end(), target);
                }
            m_Patches.push_back(patch);
        }
    }
}

std::array<int, 2> QuadNet::ends(int edge) const
{
    int const vertex = edge / 2;
    int const i = vertex / m_Around;
    int const j = vertex % m_Around;
    return {vertex, edge % 2 == 0 ? at(i + 1, j) : at(i, j + 1)};
}

std::array<QuadNet::Side, 4> QuadNet::sides(int face) const
{
    int const i = face / m_Around;
    int const j = face % m_Around;
    return {{{2 * face, true},
             {2 * at(i + 1, j) + 1, true},
             {2 * at(i, j + 1), false},
             {2 * face + 1, false}}};
}

QuadNet const & quadNet(int faces)
{
    return modelOf<QuadNet>(faces);
}

void createQuadNet(int faces)
{
    using namespace transl_tk;
    QuadNet const & net = quadNet(faces);
    int const count = net.faces();
    auto const size = static_cast<std::size_t>(count);
    geom::Parameterization const none;

    std::vector<Curve3D *> curves;
    curves.reserve(2 * size);
    int id = 0;
    for (QuadNet::Line const & line : net.m_Lines)
        curves.push_back(Curve3D::create(
            ++id, geom::Line::create(numbers(line.point), numbers(line.direction), none)));

    std::vector<Surface *> surfaces;
    surfaces.reserve(size);
    auto plane = net.m_Planes.begin();
    auto patch = net.m_Patches.begin();
    for (int face = 0; face < count; ++face) {
        geom::Surface * surface = nullptr;
        if (QuadNet::isPlane(face)) {
            surface =
                geom::Plane::create(numbers(plane->location), numbers(plane->first),
                                    numbers(plane->second), numbers(plane->second), none, none);
            ++plane;
        } else {
            surface = geom::BSplineSurface::create(
                QuadNet::Degree, false, false, QuadNet::Degree, false, false, QuadNet::KnotCount,
                PatchMultiplicities, PatchKnots, QuadNet::KnotCount, PatchMultiplicities,
                PatchKnots, QuadNet::PointsADirection, QuadNet::PointsADirection, patch->data(),
                nullptr, none, none, geom::Surface::Type::BSpline);
            ++patch;
        }
        surfaces.push_back(Surface::create(face + 1, surface));
    }

    std::vector<Vertex *> vertices;
    vertices.reserve(size);
    id = 0;
    for (Triple const & point : net.m_Vertices)
        vertices.push_back(Vertex::create(++id, geom::Point::create(point[0], point[1], point[2])));

    std::vector<Edge *> edges;
    edges.reserve(2 * size);
    for (int edge = 0; edge < 2 * count; ++edge) {
        auto const [start, end] = net.ends(edge);
        edges.push_back(Edge::create(edge + 1, curves[static_cast<std::size_t>(edge)],
                                     vertices[static_cast<std::size_t>(start)],
                                     vertices[static_cast<std::size_t>(end)], true));
    }

    std::vector<Fin *> fins;
    fins.reserve(4 * size);
    id = 0;
    for (int face = 0; face < count; ++face)
        for (QuadNet::Side const & side : net.sides(face))
            fins.push_back(
                Fin::create(++id, edges[static_cast<std::size_t>(side.edge)], side.sense));

    std::vector<Loop *> loops;
    loops.reserve(size);
    auto fin = fins.begin();
    for (int face = 0; face < count; ++face) {
        loops.push_back(Loop::create(face + 1));
        for (int side = 0; side < 4; ++side)
            loops.back()->addFin(*fin++);
    }

    std::vector<Face *> facesMade;
    facesMade.reserve(size);
    for (int face = 0; face < count; ++face) {
        facesMade.push_back(Face::create(face + 1, surfaces[static_cast<std::size_t>(face)]));
        facesMade.back()->setLabel("");
        facesMade.back()->setSense(true);
        facesMade.back()->addLoop(loops[static_cast<std::size_t>(face)]);
    }

    Shell * const shell = Shell::create(1);
    for (Face * const face : facesMade)
        shell->addFace(face);
    Body::create(1, "torus")->addShell(shell);
}

TriangleGrid::TriangleGrid(int triangles)
{
    // Closed round one axis, so that the quadrilaterals are as many as the vertices but for a row.
    int const around = static_cast<int>(std::sqrt(triangles / 2.0));
    int const rows = triangles / 2 / around;
    m_Vertices.reserve(3UL * static_cast<std::size_t>(around) * static_cast<std::size_t>(rows + 1));
    for (int i = 0; i <= rows; ++i)
        for (int j = 0; j < around; ++j) {
            double const angle = Turn * j / around;
            double const radius = 500 + std::sin(0.01 * i);
            m_Vertices.push_back(static_cast<float>(radius * std::cos(angle)));
            m_Vertices.push_back(static_cast<float>(radius * std::sin(angle)));
            m_Vertices.push_back(static_cast<float>(0.5 * i));
        }
    m_Indices.reserve(6UL * static_cast<std::size_t>(around) * static_cast<std::size_t>(rows));
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < around; ++j) {
            int const here = i * around + j;
            int const beside = i * around + (j + 1) % around;
            for (int const corner :
                 {here, beside, beside + around, here, beside + around, here + around})
                m_Indices.push_back(corner);
        }
}

TriangleGrid const & triangleGrid(int triangles)
{
    return modelOf<TriangleGrid>(triangles);
}

void createTriangleGrid(int triangles)
{
    TriangleGrid const & grid = triangleGrid(triangles);
    transl_tk::TriStrip::create(
        1, grid.m_Vertices.data(), nullptr, static_cast<int>(grid.m_Vertices.size() / 3), nullptr,
        0, grid.m_Indices.data(), static_cast<int>(grid.m_Indices.size()), false);
}

} // namespace bench
