#include "support/models.h"
#include "topology/tri_strip_data.h"
#include "unit/topology/latitude_strips_table.h"
#include "unit/topology/projected_box_quads.h"
#include "unit/topology/projected_box_vertices.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <string>

namespace transl_tk {
namespace {

using Vector = std::array<float, 3>;

constexpr double Origin[] = {0, 0, 0};
constexpr unsigned char Colour[] = {1, 20, 255};
constexpr double Infinity = std::numeric_limits<double>::infinity();

class SphereFacets : public testing::Test
{
protected:
    /// Makes a sphere; what it prints is caught, and what it holds is in `m_Content`.
    void make(TriStrip::Type type, double radius, double const (&centre)[3] = Origin)
    {
        testing::internal::CaptureStdout();
        m_Strip = TriStrip::create(0, centre, radius, Colour, type, true);
        m_Printed = testing::internal::GetCapturedStdout();
        m_Content = contentOf(*m_Strip);
    }

    Vector vertex(int number) const { return at(m_Content.vertices, number); }
    Vector normal(int number) const { return at(m_Content.normals, number); }

    std::size_t criticalErrors() const
    {
        std::size_t count = 0;
        for (auto at = m_Printed.find("Division"); at != std::string::npos;
             at = m_Printed.find("Division", at + 1))
            ++count;
        return count;
    }

    void expectEmpty()
    {
        float * vertices = nullptr;
        unsigned char * colours = nullptr;
        float * normals = nullptr;
        int * indices = nullptr;
        std::array<int, 3> counts = {1, 1, 1};
        m_Strip->getData(vertices, colours, counts[0], normals, counts[1], indices, counts[2]);
        EXPECT_EQ(counts, (std::array{0, 0, 0}));
        EXPECT_EQ(vertices, nullptr);
        EXPECT_EQ(colours, nullptr);
        EXPECT_EQ(normals, nullptr);
        EXPECT_EQ(indices, nullptr);
        EXPECT_TRUE(m_Strip->getStripFlag());
        m_Strip->setColor(Colour);
        EXPECT_EQ(contentOf(*m_Strip).colours, nullptr);
        TriStrip::destruct(m_Strip);
        EXPECT_TRUE(tests::currentSubPool().m_TriStrips.m_Entities.empty());
    }

    static Vector at(float const * values, int number)
    {
        Vector found{};
        std::copy_n(values + std::ptrdiff_t{3} * number, 3, found.begin());
        return found;
    }

    tests::ScopedPool m_Pool;
    TriStrip * m_Strip = nullptr;
    TriStripContent m_Content;
    std::string m_Printed;
};

double lengthOf(Vector const & v)
{
    return std::hypot(double{v[0]}, double{v[1]}, double{v[2]});
}

TEST_F(SphereFacets, HaveTheNumbersOfTheirTypes)
{
    EXPECT_EQ(static_cast<int>(TriStrip::LatitudeStrips), 0);
    EXPECT_EQ(static_cast<int>(TriStrip::ProjectedBox), 1);
}

TEST_F(SphereFacets, OfAnotherTypeAreEmpty)
{
    make(static_cast<TriStrip::Type>(2), 1);
    expectEmpty();
    make(static_cast<TriStrip::Type>(-1), 1);
    expectEmpty();
}

TEST_F(SphereFacets, OfARadiusThatIsNotFiniteAreEmpty)
{
    for (auto const type : {TriStrip::LatitudeStrips, TriStrip::ProjectedBox})
        for (double const radius : {Infinity, -Infinity, std::nan("")}) {
            SCOPED_TRACE(testing::Message() << type << " " << radius);
            make(type, radius);
            expectEmpty();
        }
}

TEST_F(SphereFacets, KeepTheFlagAndColourEveryVertex)
{
    for (auto const type : {TriStrip::LatitudeStrips, TriStrip::ProjectedBox}) {
        make(type, 1);
        EXPECT_TRUE(m_Strip->getStripFlag());
        ASSERT_EQ(m_Content.colourCount, m_Content.vertexCount);
        for (int i = 0; i < 3 * m_Content.vertexCount; ++i)
            ASSERT_EQ(m_Content.colours[i], Colour[i % 3]) << i;
    }
}

TEST_F(SphereFacets, AreNotStartedWhenTheIdIsTaken)
{
    make(TriStrip::ProjectedBox, 1);
    testing::internal::CaptureStdout();
    EXPECT_EQ(TriStrip::create(1, Origin, 0.0, Colour, TriStrip::ProjectedBox, false), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), ""); // it would tell of divisions by zero
    EXPECT_EQ(tests::currentSubPool().m_TriStrips.m_Entities.lookup(1), m_Strip);
}

TEST_F(SphereFacets, LatitudeStripsHaveTwoBandsForEveryWholeUnitOfTheRadiusAndTenAtLeast)
{
    // n bands of 2n + 2 vertices, and 2n - 2 doubled ones.
    std::map<double, int> const expected = {{1.0, 238},   {4.9, 238},  {5.0, 238}, {5.9, 238},
                                            {6.0, 334},   {7.9, 446},  {-3, 238},  {-1e300, 238},
                                            {12.5, 1246}, {0.25, 238}, {0, 238}};
    for (auto const & [radius, count] : expected) {
        SCOPED_TRACE(radius);
        make(TriStrip::LatitudeStrips, radius);
        EXPECT_EQ(m_Content.vertexCount, count);
        EXPECT_EQ(m_Content.normalCount, count);
        EXPECT_EQ(m_Content.indexCount, 0);
        EXPECT_EQ(m_Content.indices, nullptr);
    }
}

TEST_F(SphereFacets, LatitudeStripsOfMoreVerticesThanAnIntCountsAreEmpty)
{
    for (double const radius : {16384.0, 32768.0, 1e9, 1e19, 1e300}) {
        SCOPED_TRACE(radius);
        make(TriStrip::LatitudeStrips, radius);
        expectEmpty();
    }
}

TEST_F(SphereFacets, LatitudeStripsAreTheStripThatWasWorkedOut)
{
    make(TriStrip::LatitudeStrips, 1.7, {0.3, -0.2, 0.7});
    ASSERT_EQ(m_Content.vertexCount, 238);
    for (int i = 0; i < 238; ++i) {
        tests::FacetVertex const & expected = tests::LatitudeVertices[static_cast<std::size_t>(i)];
        EXPECT_EQ(vertex(i), expected.position) << i;
        EXPECT_EQ(normal(i), expected.normal) << i;
    }
}

TEST_F(SphereFacets, LatitudeStripsBeginAtTheNorthPoleAndEndNextToTheSouthPole)
{
    make(TriStrip::LatitudeStrips, 7.9, {1, 2, 3});
    EXPECT_EQ(vertex(0), (Vector{1, 2, 10.9F}));
    EXPECT_EQ(normal(0), (Vector{0, 0, 1}));
    EXPECT_NEAR(vertex(m_Content.vertexCount - 1)[2], 3 - 7.9, 1e-6);
}

TEST_F(SphereFacets, LatitudeStripsDoubleTheVerticesBetweenBandsAndNoOthers)
{
    make(TriStrip::LatitudeStrips, 1);
    std::vector<int> doubled;
    for (int i = 1; i < m_Content.vertexCount; ++i)
        if (vertex(i) == vertex(i - 1) && normal(i) == normal(i - 1))
            doubled.push_back(i);
    EXPECT_EQ(doubled, (std::vector<int>{22, 24, 46, 48, 70, 72, 94, 96, 118, 120, 142, 144, 166,
                                         168, 190, 192, 214, 216}));
}

TEST_F(SphereFacets, LatitudeStripsRunAlongTheirBandsOnTheSphere)
{
    make(TriStrip::LatitudeStrips, 12.5);
    int const positions = 2 * 24 + 2;
    double const step = 3.141592653589793 / 24;
    // Each band but the first doubles its first vertex, each but the last one its last.
    for (int band = 0; band < 24; ++band)
        for (int position = 0; position < positions; ++position) {
            int const number = band * 52 + position;
            double const latitude = step * (band + position % 2);
            double const longitude = step * (position - position % 2);
            Vector const at = vertex(number);
            EXPECT_NEAR(at[0], 12.5 * std::cos(longitude) * std::sin(latitude), 2e-6) << number;
            EXPECT_NEAR(at[1], 12.5 * std::sin(longitude) * std::sin(latitude), 2e-6) << number;
            EXPECT_NEAR(at[2], 12.5 * std::cos(latitude), 2e-6) << number;
        }
}

TEST_F(SphereFacets, LatitudeStripsHaveUnitNormalsWithoutCriticalErrors)
{
    make(TriStrip::LatitudeStrips, 7.9, {1e3, 1e3, 1e3});
    EXPECT_EQ(m_Printed, "");
    for (int i = 0; i < m_Content.normalCount; ++i)
        EXPECT_NEAR(lengthOf(normal(i)), 1, 1e-6) << i;
}

TEST_F(SphereFacets, LatitudeStripsWithoutRadiusLieOnTheCentre)
{
    make(TriStrip::LatitudeStrips, 0, {1, 2, 3});
    EXPECT_EQ(criticalErrors(), 220U); // doubled vertices have the normal of their first
    for (int i = 0; i < m_Content.vertexCount; ++i) {
        EXPECT_EQ(vertex(i), (Vector{1, 2, 3}));
        EXPECT_TRUE(std::isnan(normal(i)[0]));
    }
}

TEST_F(SphereFacets, ProjectedBoxHas488VerticesAnd2916IndicesWhateverTheRadius)
{
    for (double const radius : {1e-3, 1.0, -3.0, 7.9, 1e9}) {
        SCOPED_TRACE(radius);
        make(TriStrip::ProjectedBox, radius);
        EXPECT_EQ(m_Printed, "");
        EXPECT_EQ(m_Content.vertexCount, 488);
        EXPECT_EQ(m_Content.normalCount, 488);
        EXPECT_EQ(m_Content.indexCount, 2916);
    }
}

TEST_F(SphereFacets, ProjectedBoxHasTheVerticesThatWereWorkedOut)
{
    make(TriStrip::ProjectedBox, 3, {0.5, -0.25, 2});
    ASSERT_EQ(m_Content.vertexCount, 488);
    for (int i = 0; i < 488; ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(vertex(i)[axis], tests::BoxVertices[static_cast<std::size_t>(i)][axis],
                        5e-7)
                << i;
}

TEST_F(SphereFacets, ProjectedBoxHasTheTrianglesThatWereWorkedOut)
{
    make(TriStrip::ProjectedBox, 3, {0.5, -0.25, 2});
    ASSERT_EQ(m_Content.indexCount, 2916);
    int const * index = m_Content.indices;
    for (tests::BoxQuad const & quad : tests::BoxQuads) {
        auto const [a, b, c, d] = quad.corners;
        std::array<int, 6> triangles{};
        std::copy_n(index, 6, triangles.begin());
        index += 6;
        std::array const alongAC = {a, b, c, a, c, d};
        std::array const alongBD = {a, b, d, b, c, d};
        EXPECT_TRUE((quad.shorter != tests::BD && triangles == alongAC) ||
                    (quad.shorter != tests::AC && triangles == alongBD))
            << testing::PrintToString(triangles) << " for corners "
            << testing::PrintToString(quad.corners);
    }
}

TEST_F(SphereFacets, ProjectedBoxIsClosed)
{
    make(TriStrip::ProjectedBox, 1);
    std::map<std::pair<int, int>, int> edges;
    for (int i = 0; i < m_Content.indexCount; i += 3)
        for (int corner = 0; corner < 3; ++corner) {
            int const from = m_Content.indices[i + corner];
            int const to = m_Content.indices[i + (corner + 1) % 3];
            ASSERT_TRUE(0 <= from && from < 488);
            ++edges[{from, to}];
        }
    EXPECT_EQ(edges.size(), 2916U);
    for (auto const & [edge, uses] : edges) {
        EXPECT_EQ(uses, 1);
        EXPECT_TRUE(edges.contains({edge.second, edge.first}));
    }
}

TEST_F(SphereFacets, ProjectedBoxFacesOutward)
{
    for (double const radius : {4.0, -4.0}) {
        make(TriStrip::ProjectedBox, radius);
        for (int i = 0; i < m_Content.indexCount; i += 3) {
            Vector const a = vertex(m_Content.indices[i]);
            Vector const b = vertex(m_Content.indices[i + 1]);
            Vector const c = vertex(m_Content.indices[i + 2]);
            double const volume = a[0] * (b[1] * c[2] - b[2] * c[1]) +
                                  a[1] * (b[2] * c[0] - b[0] * c[2]) +
                                  a[2] * (b[0] * c[1] - b[1] * c[0]);
            EXPECT_GT(volume, 0) << "triangle " << i / 3 << " of radius " << radius;
        }
    }
}

TEST_F(SphereFacets, ProjectedBoxLiesOnTheSphereWithItsNormals)
{
    make(TriStrip::ProjectedBox, 4);
    for (int i = 0; i < m_Content.vertexCount; ++i) {
        EXPECT_NEAR(lengthOf(vertex(i)), 4, 1e-6) << i;
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(normal(i)[axis], vertex(i)[axis] / 4, 2e-7) << i;
    }
}

TEST_F(SphereFacets, ProjectedBoxTakesItsNormalsBeforeVerticesAreRounded)
{
    make(TriStrip::ProjectedBox, 1);
    std::array<Vector, 488> normals;
    for (int i = 0; i < 488; ++i)
        normals[static_cast<std::size_t>(i)] = normal(i);
    make(TriStrip::ProjectedBox, 1, {1e7, 1e7, 1e7}); // where floats are whole numbers
    for (int i = 0; i < 488; ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(normal(i)[axis], normals[static_cast<std::size_t>(i)][axis], 1e-7) << i;
}

TEST_F(SphereFacets, ProjectedBoxWithoutRadiusLiesOnTheCentre)
{
    make(TriStrip::ProjectedBox, 0, {1, 2, 3});
    EXPECT_EQ(criticalErrors(), 488U);
    EXPECT_EQ(m_Content.vertexCount, 488);
    EXPECT_EQ(m_Content.indexCount, 2916);
    for (int i = 0; i < m_Content.vertexCount; ++i) {
        EXPECT_EQ(vertex(i), (Vector{1, 2, 3}));
        EXPECT_TRUE(std::isnan(normal(i)[0]));
    }
}

} // namespace
} // namespace transl_tk
