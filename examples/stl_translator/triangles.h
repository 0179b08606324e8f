#ifndef KELD_EXAMPLES_TRIANGLES_H
#define KELD_EXAMPLES_TRIANGLES_H

#include <keld-transl/topology/tri_strip.h>

#include <algorithm>
#include <cmath>

namespace stl {

/// What is wrong with a triangle that cannot be written.
enum class Fault { IndexOutOfRange, NotFinite };

/// Calls `visit(corners)`, three pointers to three coordinates each, for every triangle of `strip`
/// in order, and `fail(number, fault)` in the place of those that cannot be written; numbers count
/// from 1. The joins of a strip are passed over.
template <class Visit, class Fail>
void forEachTriangle(transl_tk::TriStrip & strip, Visit && visit, Fail && fail)
{
    float * vertices = nullptr;
    float * normals = nullptr;
    unsigned char * colours = nullptr;
    int * indices = nullptr;
    int vertexCount = 0;
    int normalCount = 0;
    int indexCount = 0;
    strip.getData(vertices, colours, vertexCount, normals, normalCount, indices, indexCount);
    if (vertices == nullptr)
        return;

    using Corners = float const * [3];
    auto const isFinite = [](Corners const & corners) {
        return std::all_of(corners, corners + 3, [](float const * corner) {
            return std::isfinite(corner[0]) && std::isfinite(corner[1]) && std::isfinite(corner[2]);
        });
    };
    auto const take = [&](int number, Corners const & corners) {
        if (isFinite(corners))
            visit(corners);
        else
            fail(number, Fault::NotFinite);
    };

    if (indices != nullptr && indexCount > 0) {
        for (int i = 0; i < indexCount / 3; ++i) {
            int const * const triangle = indices + 3LL * i;
            if (std::all_of(triangle, triangle + 3,
                            [&](int index) { return index >= 0 && index < vertexCount; }))
                take(i + 1, {vertices + 3LL * triangle[0], vertices + 3LL * triangle[1],
                             vertices + 3LL * triangle[2]});
            else
                fail(i + 1, Fault::IndexOutOfRange);
        }
        return;
    }

    auto const samePlace = [](float const * a, float const * b) { return std::equal(a, a + 3, b); };
    for (int i = 0; i < vertexCount - 2; ++i) {
        float const * const a = vertices + 3LL * i;
        float const * const b = a + 3;
        float const * const c = b + 3;
        if (samePlace(a, b) || samePlace(b, c) || samePlace(c, a))
            continue;
        if (i % 2 == 0)
            take(i + 1, {a, b, c});
        else
            take(i + 1, {b, a, c});
    }
}

} // namespace stl

#endif
