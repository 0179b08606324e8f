#ifndef KELD_TRANSL_EXCHANGE_RECORDS_FACET_RECORD_H
#define KELD_TRANSL_EXCHANGE_RECORDS_FACET_RECORD_H

#include "exchange/section.h"
#include "topology/tri_strip_data.h"

#include <span>

namespace transl_tk {

/// A `TriStrip`: id, flag, and counted vertices, colours, normals and indices. The colours have a
/// count of their own, which is that of the vertices or 0.
struct TriStripRecord
{
    using Entity = TriStrip;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_TriStrips;
    static constexpr std::size_t LeastSize = 21;

    template <class Sink> static void put(Sink & sink, TriStrip & strip)
    {
        TriStripContent const content = contentOf(strip);
        sink.i32(strip.getId());
        sink.u8(strip.getStripFlag());
        putArray(sink, content.vertices, content.vertexCount, 3);
        putArray(sink, content.colours, content.colourCount, 3);
        putArray(sink, content.normals, content.normalCount, 3);
        putArray(sink, content.indices, content.indexCount, 1);
    }

    static void read(StreamReader & reader);

private:
    template <class Sink, class T>
    static void putArray(Sink & sink, T const * elements, int count, std::size_t width)
    {
        std::size_t const length = width * static_cast<std::size_t>(count);
        sink.count(static_cast<std::size_t>(count));
        sink.elements(std::span(elements, length), length);
    }
};

} // namespace transl_tk

#endif
