#ifndef KELD_TRANSL_EXCHANGE_RECORDS_POINT_RECORD_H
#define KELD_TRANSL_EXCHANGE_RECORDS_POINT_RECORD_H

#include "exchange/stream_reader.h"

#include <keld-transl/model/point3d.h>
#include <keld-transl/model/sub_pool.h>

namespace transl_tk {

/// A `Point3D`: id and coordinates, 28 bytes.
struct PointRecord
{
    using Entity = Point3D;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Points;

    int id;
    double coordinates[3];

    void take(Point3D & point)
    {
        id = point.getId();
        point.getCoordinates(coordinates[0], coordinates[1], coordinates[2]);
    }

    template <class Stream> constexpr void fields(Stream & stream)
    {
        stream.i32(id);
        stream.f64(coordinates);
    }

    Point3D * make(StreamReader const &) const
    {
        return Point3D::create(id, coordinates[0], coordinates[1], coordinates[2]);
    }
};

} // namespace transl_tk

#endif
