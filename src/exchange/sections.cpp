#include "exchange/records/carrier_records.h"
#include "exchange/records/facet_record.h"
#include "exchange/records/point_record.h"
#include "exchange/records/text_records.h"
#include "exchange/records/topology_records.h"
#include "exchange/section.h"

#include <array>

namespace transl_tk {

namespace {

/// The content of a section of which this library knows no records yet.
struct NoRecords
{
    template <class Sink> static void put(Sink & sink, SubPool &) { sink.count(0); }

    static void read(StreamReader & reader, ReadSession &)
    {
        if (reader.count(1) != 0)
            reader.fail("this release knows no records of this section");
    }
};

constexpr std::array Table = {
    makeSection<VariableSection<TriStripRecord>>("facets"),
    makeSection<EntitySection<PointRecord>>("points"),
    makeSection<VariableSection<SpotWeldRecord>>("spot welds"),
    makeSection<EntitySection<CartesianCoordRecord>>("coordinate systems"),
    makeSection<VariableSection<Curve3DRecord>>("3D curves"),
    makeSection<VariableSection<UVCurveRecord>>("UV curves"),
    makeSection<VariableSection<SurfaceRecord>>("surfaces"),
    makeSection<VariableSection<VertexRecord>>("vertices"),
    makeSection<EntitySection<EdgeRecord>>("edges"),
    makeSection<EntitySection<FinRecord>>("fins"),
    makeSection<VariableSection<LoopRecord>>("loops"),
    makeSection<VariableSection<FaceRecord>>("faces"),
    makeSection<VariableSection<ShellRecord>>("shells"),
    makeSection<VariableSection<BodyRecord>>("bodies"),
    makeSection<NoRecords>("annotations"),
    makeSection<NoRecords>("assemblies"),
    makeSection<NoRecords>("parts"),
    makeSection<NoRecords>("instances"),
    makeSection<NoRecords>("attributes"),
    makeSection<NoRecords>("HTML report entries"),
    makeSection<TextListContent>("text list"),
    makeSection<FacesToSplitContent>("faces to split"),
    makeSection<LogContent>("log entries"),
};

} // namespace

std::span<Section const> sections()
{
    return Table;
}

} // namespace transl_tk
