#ifndef KELD_TOOLS_VIEW_MESH_H
#define KELD_TOOLS_VIEW_MESH_H

#include "view/placement.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>

namespace keld::view {

struct Colour
{
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;

    bool operator==(Colour const &) const = default;
};

/// What lies farther out is no place on a part.
constexpr double FarthestCoordinate = 1e30;

struct Box
{
    Triple low = {Nothing, Nothing, Nothing};
    Triple high = {-Nothing, -Nothing, -Nothing};

    bool isEmpty() const { return low[0] > high[0]; }

    void add(Triple const & point)
    {
        for (std::size_t i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], point[i]);
            high[i] = std::max(high[i], point[i]);
        }
    }

    /// Of eight.
    Triple corner(unsigned number) const
    {
        return {(number & 1U) != 0 ? high[0] : low[0], (number & 2U) != 0 ? high[1] : low[1],
                (number & 4U) != 0 ? high[2] : low[2]};
    }

private:
    static constexpr double Nothing = std::numeric_limits<double>::infinity();
};

/// The triangles of a `TriStrip`, whose arrays must live as long.
struct Mesh
{
    float const * vertices = nullptr;
    std::size_t vertexCount = 0;
    float const * normals = nullptr;         ///< one for each vertex, or null
    unsigned char const * colours = nullptr; ///< one for each vertex, or null
    int const * indices = nullptr;           ///< of the corners of triangles; null for a strip
    std::size_t indexCount = 0;
    /// Vertices of this colour, and all without colours, have that of the occurrence.
    std::optional<Colour> inherited;

    // Found by `measure`.
    std::size_t triangles = 0;
    Box box;

    Triple vertex(std::size_t number) const
    {
        float const * const v = vertices + 3 * number;
        return {v[0], v[1], v[2]};
    }

    /// The colour of a vertex, nothing for that of the occurrence.
    std::optional<Colour> colour(std::size_t number) const
    {
        if (colours == nullptr)
            return std::nullopt;
        unsigned char const * const c = colours + 3 * number;
        Colour const own = {c[0], c[1], c[2]};
        return own == inherited ? std::nullopt : std::optional(own);
    }

    bool isPlaced(std::size_t number) const
    {
        float const * const v = vertices + 3 * number;
        constexpr auto Farthest = static_cast<float>(FarthestCoordinate);
        return std::abs(v[0]) <= Farthest && std::abs(v[1]) <= Farthest &&
               std::abs(v[2]) <= Farthest;
    }

    bool samePlace(std::size_t a, std::size_t b) const
    {
        return std::equal(vertices + 3 * a, vertices + 3 * a + 3, vertices + 3 * b);
    }

    /// Calls `visit` with the three corners of each triangle. Those with an index out of range or a
    /// corner at no sensible place are left out, and so are the joins of a strip.
    template <class Visit> void forEachTriangle(Visit const & visit) const
    {
        auto const visitPlaced = [&](std::size_t a, std::size_t b, std::size_t c) {
            if (isPlaced(a) && isPlaced(b) && isPlaced(c))
                visit(a, b, c);
        };
        if (indices == nullptr) {
            for (std::size_t i = 2; i < vertexCount; ++i) {
                if (!samePlace(i - 2, i - 1) && !samePlace(i - 1, i) && !samePlace(i - 2, i))
                    visitPlaced(i - 2, i - 1, i);
            }
            return;
        }
        auto const isIndex = [&](int index) {
            return index >= 0 && static_cast<std::size_t>(index) < vertexCount;
        };
        for (std::size_t i = 2; i < indexCount; i += 3) {
            int const * const corner = indices + i - 2;
            if (isIndex(corner[0]) && isIndex(corner[1]) && isIndex(corner[2]))
                visitPlaced(static_cast<std::size_t>(corner[0]),
                            static_cast<std::size_t>(corner[1]),
                            static_cast<std::size_t>(corner[2]));
        }
    }

    void measure()
    {
        triangles = 0;
        box = {};
        forEachTriangle([&](std::size_t a, std::size_t b, std::size_t c) {
            ++triangles;
            for (std::size_t const corner : {a, b, c})
                box.add(vertex(corner));
        });
    }
};

} // namespace keld::view

#endif
