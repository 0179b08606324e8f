#ifndef KELD_TRANSL_EXCHANGE_RECORDS_TOPOLOGY_RECORDS_H
#define KELD_TRANSL_EXCHANGE_RECORDS_TOPOLOGY_RECORDS_H

#include "exchange/records/links.h"
#include "exchange/section.h"
#include "topology/proxy_body.h"
#include "topology/proxy_edge.h"
#include "topology/proxy_face.h"
#include "topology/proxy_fin.h"
#include "topology/proxy_loop.h"
#include "topology/proxy_shell.h"

#include <keld-transl/geom/point.h>
#include <keld-transl/topology/uv_curve.h>

namespace transl_tk {

/// A `Vertex`: id, whether it holds a point, and the point or the parameter.
struct VertexRecord
{
    using Entity = Vertex;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Vertices;
    static constexpr std::size_t LeastSize = 13;

    template <class Sink> static void put(Sink & sink, Vertex & vertex)
    {
        geom::Point * point = nullptr;
        double position[3] = {};
        vertex.getGeometry(point, position[0]);
        sink.i32(vertex.getId());
        sink.u8(point != nullptr);
        if (point == nullptr) {
            sink.f64(position[0]);
        } else {
            point->getCoordinates(position[0], position[1], position[2]);
            sink.f64(position);
        }
    }

    static void read(StreamReader & reader);
};

/// An `Edge`: id, curve, start and end vertex, sense; 17 bytes.
struct EdgeRecord
{
    using Entity = Edge;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Edges;

    int id;
    int curve;
    int start;
    int end;
    bool sense;

    void take(Edge & entity)
    {
        auto & edge = static_cast<ProxyEdge &>(entity);
        id = edge.getId();
        curve = edge.curveId();
        start = edge.startId();
        end = edge.endId();
        sense = edge.getSense();
    }

    template <class Stream> constexpr void fields(Stream & stream)
    {
        stream.i32(id);
        stream.i32(curve);
        stream.i32(start);
        stream.i32(end);
        stream.u8(sense);
    }

    Edge * make(StreamReader const & reader) const;
    static void undo(Base * entity) { static_cast<ProxyEdge *>(entity)->destroyAlone(); }
};

/// A `Fin`: id, sense, edge, UV curve; 13 bytes. The sense stands ahead of what the fin refers to.
struct FinRecord
{
    using Entity = Fin;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Fins;

    int id;
    bool sense;
    int edge;
    int uvCurve;

    void take(Fin & entity)
    {
        auto & fin = static_cast<ProxyFin &>(entity);
        id = fin.getId();
        sense = fin.getSense();
        edge = fin.edgeId();
        uvCurve = fin.getUVCurve() != nullptr ? fin.getUVCurve()->getId() : NoEntity;
    }

    template <class Stream> constexpr void fields(Stream & stream)
    {
        stream.i32(id);
        stream.u8(sense);
        stream.i32(edge);
        stream.i32(uvCurve);
    }

    Fin * make(StreamReader const & reader) const;
    static void undo(Base * entity) { static_cast<ProxyFin *>(entity)->destroyAlone(); }
};

/// A `Loop`: id, a count of fins, their ids.
struct LoopRecord
{
    using Entity = Loop;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Loops;
    static constexpr std::size_t LeastSize = 8;

    template <class Sink> static void put(Sink & sink, Loop & entity)
    {
        auto & loop = static_cast<ProxyLoop &>(entity);
        sink.i32(loop.getId());
        putIds(sink, loop.fins());
    }

    static void read(StreamReader & reader);
    static void undo(Base * entity) { static_cast<ProxyLoop *>(entity)->destroyAlone(); }
};

/// A `Face`: id, label, sense, surface, a count of loops, their ids.
struct FaceRecord
{
    using Entity = Face;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Faces;
    static constexpr std::size_t LeastSize = 17;

    template <class Sink> static void put(Sink & sink, Face & entity)
    {
        auto & face = static_cast<ProxyFace &>(entity);
        sink.i32(face.getId());
        sink.string(face.label());
        sink.u8(face.getSense());
        sink.i32(face.surfaceId());
        putIds(sink, face.loops());
    }

    static void read(StreamReader & reader);
    static void undo(Base * entity) { static_cast<ProxyFace *>(entity)->destroyAlone(); }
};

/// A `Shell`: id, flag, a count of faces, their ids.
struct ShellRecord
{
    using Entity = Shell;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Shells;
    static constexpr std::size_t LeastSize = 9;

    template <class Sink> static void put(Sink & sink, Shell & entity)
    {
        auto & shell = static_cast<ProxyShell &>(entity);
        sink.i32(shell.getId());
        sink.u8(shell.getShellFlag());
        putIds(sink, shell.faces());
    }

    static void read(StreamReader & reader);
    static void undo(Base * entity) { static_cast<ProxyShell *>(entity)->destroyAlone(); }
};

/// A `Body`: id, name, a count of shells, their ids, a count of facet strips, their ids.
struct BodyRecord
{
    using Entity = Body;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Bodies;
    static constexpr std::size_t LeastSize = 16;

    template <class Sink> static void put(Sink & sink, Body & entity)
    {
        auto & body = static_cast<ProxyBody &>(entity);
        sink.i32(body.getId());
        sink.string(body.name());
        putIds(sink, body.shells());
        putIds(sink, body.strips());
    }

    static void read(StreamReader & reader);
    static void undo(Base * entity) { static_cast<ProxyBody *>(entity)->destroyAlone(); }
};

} // namespace transl_tk

#endif
