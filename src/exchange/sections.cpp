#include "exchange/records/annotation_record.h"
#include "exchange/records/attribute_record.h"
#include "exchange/records/carrier_records.h"
#include "exchange/records/facet_record.h"
#include "exchange/records/hierarchy_records.h"
#include "exchange/records/point_record.h"
#include "exchange/records/text_records.h"
#include "exchange/records/topology_records.h"
#include "exchange/section.h"

#include <array>

namespace transl_tk {

namespace {

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
    makeSection<VariableSection<AnnotationRecord>>("annotations"),
    makeSection<AssembliesContent>("assemblies"),
    makeSection<PartsContent>("parts"),
    makeSection<InstancesContent>("instances"),
    makeSection<AttributesContent>("attributes"),
    makeSection<ReportEntriesContent>("HTML report entries"),
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
