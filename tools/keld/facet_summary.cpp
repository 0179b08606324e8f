#include "facet_summary.h"

#include <keld-transl/topology/tri_strip.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

namespace keld {

namespace {

using transl_tk::TriStrip;

constexpr int AreaDigits = 9;

/// What all triangles have in common.
class Facets
{
public:
    void add(TriStrip & mesh)
    {
        float * vertices = nullptr;
        float * normals = nullptr;
        unsigned char * colours = nullptr;
        int * indices = nullptr;
        int vertexCount = 0;
        int normalCount = 0;
        int indexCount = 0;
        mesh.getData(vertices, colours, vertexCount, normals, normalCount, indices, indexCount);
        if (vertices == nullptr)
            return;
        m_Vertices += std::max(vertexCount, 0);
        if (indices != nullptr && indexCount > 0)
            addList(vertices, vertexCount, indices, indexCount);
        else
            addStrip(vertices, vertexCount);
    }

    unsigned long long triangles() const { return m_Triangles; }

    void print() const
    {
        printLine("triangles", std::to_string(m_Triangles));
        printLine("vertices", std::to_string(m_Vertices));
        if (m_Triangles == 0)
            return;
        printLine("from", text(m_Low));
        printLine("to", text(m_High));
        char digits[32];
        printLine("area", {digits, std::to_chars(digits, digits + sizeof(digits), m_Area,
                                                 std::chars_format::general, AreaDigits)
                                       .ptr});
    }

private:
    static void printLine(char const * name, std::string const & value)
    {
        std::printf("    %-30s%s\n", name, value.c_str());
    }

    static std::string text(float const (&position)[3])
    {
        std::string result;
        for (float const coordinate : position) {
            char digits[32];
            result += result.empty() ? "" : " ";
            result.append(digits, std::to_chars(digits, digits + sizeof(digits), coordinate).ptr);
        }
        return result;
    }

    void addList(float const * vertices, int vertexCount, int const * indices, int indexCount)
    {
        int const * const end = indices + indexCount / 3 * 3LL;
        for (int const * triangle = indices; triangle != end; triangle += 3) {
            if (std::all_of(triangle, triangle + 3,
                            [&](int index) { return index >= 0 && index < vertexCount; }))
                addTriangle(vertices + 3LL * triangle[0], vertices + 3LL * triangle[1],
                            vertices + 3LL * triangle[2]);
        }
    }

    void addStrip(float const * vertices, int vertexCount)
    {
        auto const samePlace = [](float const * a, float const * b) {
            return std::equal(a, a + 3, b);
        };
        for (int i = 0; i < vertexCount - 2; ++i) {
            float const * const a = vertices + 3LL * i;
            if (!samePlace(a, a + 3) && !samePlace(a + 3, a + 6) && !samePlace(a, a + 6))
                addTriangle(a, a + 3, a + 6);
        }
    }

    void addTriangle(float const * a, float const * b, float const * c)
    {
        ++m_Triangles;
        double u[3];
        double v[3];
        for (int i = 0; i < 3; ++i) {
            m_Low[i] = std::min({m_Low[i], a[i], b[i], c[i]});
            m_High[i] = std::max({m_High[i], a[i], b[i], c[i]});
            u[i] = double{b[i]} - a[i];
            v[i] = double{c[i]} - a[i];
        }
        double const cross[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                                 u[0] * v[1] - u[1] * v[0]};
        m_Area += std::sqrt(cross[0] * cross[0] + cross[1] * cross[1] + cross[2] * cross[2]) / 2;
    }

    static constexpr float Infinity = std::numeric_limits<float>::infinity();

    unsigned long long m_Triangles = 0;
    long long m_Vertices = 0;
    float m_Low[3] = {Infinity, Infinity, Infinity};
    float m_High[3] = {-Infinity, -Infinity, -Infinity};
    double m_Area = 0;
};

Facets facetsOf(transl_tk::SubPool const & model)
{
    Facets facets;
    model.m_TriStrips.m_Entities.forEach(
        [&](int, transl_tk::Base * mesh) { facets.add(*static_cast<TriStrip *>(mesh)); });
    return facets;
}

} // namespace

void printFacets(transl_tk::SubPool const & model)
{
    if (!model.m_TriStrips.m_Entities.empty())
        facetsOf(model).print();
}

unsigned long long trianglesIn(transl_tk::SubPool const & model)
{
    return facetsOf(model).triangles();
}

} // namespace keld
