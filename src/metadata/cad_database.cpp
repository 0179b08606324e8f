#include "model/entity.h"

#include <keld-common/files.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/metadata/cad_database.h>
#include <keld-transl/metadata/database_policy.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/gather_hierarchies.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/tri_strip.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>

namespace transl_tk {

namespace {

useCadDataBase s_UseCadDataBase = CadDataBaseUnknown;

/// What the shapes of types 1, 2, 3, ... count under.
constexpr std::array s_SurfaceKeys = {SurfaceType1,      SurfaceBSpline, SurfaceCone,
                                      SurfaceCylinder,   SurfaceOffset,  SurfaceType6,
                                      SurfaceRevolution, SurfaceRuled,   SurfaceExtrusion,
                                      SurfaceTorus,      SurfaceSphere,  SurfacePlane};
constexpr std::array s_CurveKeys = {CurveCircle, CurveBSpline,   CurveEllipse,  CurveType4,
                                    CurveLine,   CurveLineStrip, CurveComposite};

/// What the attributes of types 1, 2, 3, ... count under.
constexpr std::array s_AttributeKeys = {
    AttributesGeneral, AttributesGeneral, AttributesGeneral, AttributesGeneral,
    AttributesType5,   AttributesGeneral, AttributesType7,   AttributesGeneral,
    AttributesGeneral, AttributesType10,  AttributesType11,  AttributesType12,
    AttributesGeneral, AttributesGeneral, AttributesGeneral, AttributesGeneral};

template <class Keys> void count(DataBasePolicy & policy, Keys const & keys, int type)
{
    if (type >= 1 && type <= static_cast<int>(keys.size()))
        policy.addData(keys[static_cast<std::size_t>(type) - 1]);
}

void set(DataBasePolicy & policy, DataBaseType key, long long number)
{
    policy.addData(key, static_cast<int>(std::clamp<long long>(number, INT_MIN, INT_MAX)));
}

template <class Container>
void setSize(DataBasePolicy & policy, DataBaseType key, Container const & container)
{
    set(policy, key, static_cast<long long>(container.size()));
}

void addHierarchies(DataBasePolicy & policy, EntityTable const & table)
{
    std::vector<Assembly *> assemblies;
    std::vector<Part *> parts;
    std::vector<Instance *> instances;
    std::for_each(table.begin(), table.end(), GatherHierarchies(assemblies, parts, instances));
    setSize(policy, Assemblies, assemblies);
    setSize(policy, Parts, parts);
    setSize(policy, Instances, instances);
    for (Instance * const instance : instances) {
        Hierarchy::Type const type = instance->getComponent()->getHierarchyType();
        if (type == Hierarchy::Part)
            policy.addData(PartInstances);
        else if (type == Hierarchy::Assembly)
            policy.addData(AssemblyInstances);
    }
}

void addShapes(DataBasePolicy & policy, SubPool const & model)
{
    model.m_Surfaces.m_Entities.forEach([&policy](int, Base * carrier) {
        geom::Surface * const surface = static_cast<Surface *>(carrier)->getSurface();
        if (surface != nullptr)
            count(policy, s_SurfaceKeys, surface->getType());
    });
    model.m_Curves3D.m_Entities.forEach([&policy](int, Base * carrier) {
        geom::Curve * const curve = static_cast<Curve3D *>(carrier)->getCurve();
        if (curve != nullptr)
            count(policy, s_CurveKeys, curve->getType());
    });
}

long long trianglesOf(TriStrip & strip)
{
    float * vertices = nullptr;
    unsigned char * colours = nullptr;
    float * normals = nullptr;
    int * indices = nullptr;
    int vertexCount = 0;
    int normalCount = 0;
    int indexCount = 0;
    strip.getData(vertices, colours, vertexCount, normals, normalCount, indices, indexCount);
    return indices != nullptr && indexCount > 0 ? indexCount / 3 : vertexCount - 2LL;
}

void addTriangles(DataBasePolicy & policy, EntityTable const & strips)
{
    long long triangles = 0;
    strips.forEach([&triangles](int, Base * strip) {
        triangles += trianglesOf(*static_cast<TriStrip *>(strip));
    });
    set(policy, Triangles, triangles);
}

void addAttributes(DataBasePolicy & policy, std::vector<Attribute *> const & attributes)
{
    for (Attribute const * const attribute : attributes) {
        Attribute::Type const type = attribute->getType();
        if (type == Attribute::Comment && std::strcmp(attribute->getName(), "ANNOTATION:") == 0)
            policy.addData(Annotations);
        else
            count(policy, s_AttributeKeys, type);
    }
}

} // namespace

bool useCadDatabase()
{
    return enableDatabaseStorage() != 0;
}

useCadDataBase initCadDatabase()
{
    if (s_UseCadDataBase == CadDataBaseUnknown)
        s_UseCadDataBase = useCadDatabase() ? CadDataBaseFirstUse : CadDataBaseOff;
    else if (s_UseCadDataBase == CadDataBaseFirstUse)
        s_UseCadDataBase = CadDataBaseInUse;
    return s_UseCadDataBase;
}

void addDataCadDB(DataBasePolicy * policy)
{
    SubPool * const model = CurrentSubPool::get();
    if (!useCadDatabase() || policy == nullptr || model == nullptr)
        return;
    addHierarchies(*policy, model->m_Hierarchies.m_Entities);
    addShapes(*policy, *model);
    setSize(*policy, Faces, model->m_Faces.m_Entities);
    addTriangles(*policy, model->m_TriStrips.m_Entities);
    addAttributes(*policy, model->m_Attributes);
    setSize(*policy, SpotWelds, model->m_SpotWelds.m_Entities);
    // Replaces the attributes counted under the same key.
    setSize(*policy, Annotations, model->m_Annotations.m_Entities);
    setSize(*policy, Faces, model->m_Faces.m_Entities);

    model->clear();
    Part::create(0, "empty_part");
    policy->serialize();
}

} // namespace transl_tk
