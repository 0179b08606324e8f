#ifndef KELD_TRANSL_TOPOLOGY_TRI_STRIP_DATA_H
#define KELD_TRANSL_TOPOLOGY_TRI_STRIP_DATA_H

#include "geom/array.h"

#include <keld-transl/topology/tri_strip.h>

namespace transl_tk {

/// What a mesh holds. An array that is empty is absent, whatever its count says; one that is not
/// has three elements for each vertex or normal, and one for each index.
struct TriStripData
{
    geom::Array<float> vertices;
    geom::Array<unsigned char> colours; ///< as many as the vertices have floats
    geom::Array<float> normals;
    geom::Array<int> indices;
    int vertexCount = 0;
    int normalCount = 0;
    int indexCount = 0;
    bool flag = false;
};

/// Makes a mesh that takes the arrays over as they are. Null when there are no vertices or when the
/// id is taken; `data` then stays untouched.
TriStrip * createTriStrip(int id, TriStripData && data);

/// What a mesh has in its arrays: each count is 0 where the array is absent, and never negative.
struct TriStripContent
{
    float * vertices = nullptr;
    unsigned char * colours = nullptr;
    float * normals = nullptr;
    int * indices = nullptr;
    int vertexCount = 0;
    int colourCount = 0; ///< the number of vertices, or 0
    int normalCount = 0;
    int indexCount = 0;
};

TriStripContent contentOf(TriStrip & strip);

} // namespace transl_tk

#endif
