#ifndef KELD_TRANSL_EXCHANGE_RECORDS_CARRIER_RECORDS_H
#define KELD_TRANSL_EXCHANGE_RECORDS_CARRIER_RECORDS_H

#include "exchange/records/curve_record.h"
#include "exchange/records/geometry_fields.h"
#include "exchange/records/surface_record.h"
#include "exchange/section.h"

#include <keld-transl/model/sub_pool.h>
#include <keld-transl/topology/cartesian_coord.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/spot_weld.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/uv_curve.h>

namespace transl_tk {

/// A `CartesianCoord`: id and axes, 100 bytes.
struct CartesianCoordRecord
{
    using Entity = CartesianCoord;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_CartesianCoords;

    int id;
    geom::Placement axes;

    void take(CartesianCoord & system);

    template <class Stream> constexpr void fields(Stream & stream)
    {
        stream.i32(id);
        placementFields(stream, axes);
    }

    CartesianCoord * make(StreamReader const &) const;
};

/// A `SpotWeld`: id, coordinates, a count of names, the names.
struct SpotWeldRecord
{
    using Entity = SpotWeld;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_SpotWelds;
    static constexpr std::size_t LeastSize = 32;

    template <class Sink> static void put(Sink & sink, SpotWeld & weld)
    {
        double position[3];
        weld.getCoordinates(position[0], position[1], position[2]);
        std::size_t names = 0;
        weld.forEachWeldName(
            [](char const *, void * count) {
                ++*static_cast<std::size_t *>(count);
                return true;
            },
            &names);
        sink.i32(weld.getId());
        sink.f64(position);
        sink.count(names);
        weld.forEachWeldName(
            [](char const * name, void * stream) {
                static_cast<Sink *>(stream)->string(name);
                return true;
            },
            &sink);
    }

    static void read(StreamReader & reader);
};

/// A `Curve3D`: id and curve.
struct Curve3DRecord
{
    using Entity = Curve3D;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Curves3D;
    static constexpr std::size_t LeastSize = 8;

    template <class Sink> static void put(Sink & sink, Curve3D & carrier)
    {
        sink.i32(carrier.getId());
        putCurve(sink, carrier.getCurve());
    }

    static void read(StreamReader & reader);
};

/// A `UVCurve`: id, a kind, and the curve where the kind is that of a `UVCurve`. A carrier without
/// a curve has the kind 0, and none is made of it.
struct UVCurveRecord
{
    using Entity = UVCurve;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_UVCurves;
    static constexpr std::size_t LeastSize = 8;

    template <class Sink> static void put(Sink & sink, UVCurve & carrier)
    {
        geom::UVCurve * const curve = carrier.getCurve();
        sink.i32(carrier.getId());
        sink.i32(curve != nullptr ? carrier.getEntityKind() : 0);
        if (curve != nullptr)
            putUVCurve(sink, curve);
    }

    static void read(StreamReader & reader);
};

/// A `Surface`: id and surface.
struct SurfaceRecord
{
    using Entity = Surface;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Surfaces;
    static constexpr std::size_t LeastSize = 8;

    template <class Sink> static void put(Sink & sink, Surface & carrier)
    {
        sink.i32(carrier.getId());
        putSurface(sink, carrier.getSurface());
    }

    static void read(StreamReader & reader);
};

} // namespace transl_tk

#endif
