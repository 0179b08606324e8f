#include "exchange/records/carrier_records.h"

namespace transl_tk {

namespace {

/// Makes a carrier of a shape that was read. The shape goes when the id is taken.
template <class Record, class OwnedShape>
void carry(StreamReader const & reader, int id, OwnedShape shape)
{
    if (remember<Record>(reader, Record::Entity::create(id, shape.get())) != nullptr)
        shape.release();
}

} // namespace

void CartesianCoordRecord::take(CartesianCoord & system)
{
    double rows[4][3];
    system.getAxes(rows[0], rows[1], rows[2], rows[3]);
    id = system.getId();
    axes = {std::to_array(rows[0]), std::to_array(rows[1]), std::to_array(rows[2]),
            std::to_array(rows[3])};
}

CartesianCoord * CartesianCoordRecord::make(StreamReader const &) const
{
    double rows[4][3];
    geom::fill(rows[0], axes.location);
    geom::fill(rows[1], axes.first);
    geom::fill(rows[2], axes.second);
    geom::fill(rows[3], axes.third);
    return CartesianCoord::create(id, rows[0], rows[1], rows[2], rows[3]);
}

void SpotWeldRecord::read(StreamReader & reader)
{
    int id = 0;
    double position[3];
    reader.i32(id);
    reader.f64(position);
    std::vector<std::string> names(reader.count(4));
    for (std::string & name : names)
        reader.string(name);
    SpotWeld & weld = made<SpotWeldRecord>(
        reader, SpotWeld::create(id, position[0], position[1], position[2]), id);
    for (std::string const & name : names)
        weld.addWeldName(name.c_str());
}

void Curve3DRecord::read(StreamReader & reader)
{
    int id = 0;
    reader.i32(id);
    carry<Curve3DRecord>(reader, id, readCurve(reader));
}

void UVCurveRecord::read(StreamReader & reader)
{
    int id = 0;
    int kind = 0;
    reader.i32(id);
    reader.i32(kind);
    if (kind == EntityKindUVCurve)
        carry<UVCurveRecord>(reader, id, readUVCurve(reader));
}

void SurfaceRecord::read(StreamReader & reader)
{
    int id = 0;
    reader.i32(id);
    carry<SurfaceRecord>(reader, id, readSurface(reader));
}

} // namespace transl_tk
