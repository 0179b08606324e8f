#include "exchange/records/facet_record.h"

#include <utility>

namespace transl_tk {

void TriStripRecord::read(StreamReader & reader)
{
    int id = 0;
    TriStripData data;
    reader.i32(id);
    reader.u8(data.flag);
    std::size_t const vertices = reader.count(3 * sizeof(float));
    reader.elements(data.vertices, 3 * vertices);
    // It only says whether there are any, so it need not even be one that can be.
    int colourCount = 0;
    reader.i32(colourCount);
    if (colourCount > 0)
        reader.elements(data.colours, 3 * vertices);
    std::size_t const normals = reader.count(3 * sizeof(float));
    reader.elements(data.normals, 3 * normals);
    std::size_t const indices = reader.count(sizeof(int));
    reader.elements(data.indices, indices);
    data.vertexCount = static_cast<int>(vertices);
    data.normalCount = static_cast<int>(normals);
    data.indexCount = static_cast<int>(indices);
    remember<TriStripRecord>(reader, createTriStrip(id, std::move(data)));
}

} // namespace transl_tk
