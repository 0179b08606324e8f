#ifndef KELD_TOOLS_ENTITY_KINDS_H
#define KELD_TOOLS_ENTITY_KINDS_H

#include <keld-transl/model/sub_pool.h>

namespace keld {

/// One kind of entities: its store, what people call it, and its key for programs.
struct EntityKindRow
{
    transl_tk::EntityStore transl_tk::SubPool::*store;
    char const * name;
    char const * key;
};

/// All kinds in the order in which they are shown.
inline constexpr EntityKindRow EntityKinds[] = {
    {&transl_tk::SubPool::m_Points, "points", "points"},
    {&transl_tk::SubPool::m_Curves3D, "3D curves", "curves"},
    {&transl_tk::SubPool::m_UVCurves, "UV curves", "uvCurves"},
    {&transl_tk::SubPool::m_Surfaces, "surfaces", "surfaces"},
    {&transl_tk::SubPool::m_Vertices, "vertices", "vertices"},
    {&transl_tk::SubPool::m_Edges, "edges", "edges"},
    {&transl_tk::SubPool::m_Fins, "fins", "fins"},
    {&transl_tk::SubPool::m_Loops, "loops", "loops"},
    {&transl_tk::SubPool::m_Faces, "faces", "faces"},
    {&transl_tk::SubPool::m_Shells, "shells", "shells"},
    {&transl_tk::SubPool::m_Bodies, "bodies", "bodies"},
    {&transl_tk::SubPool::m_Hierarchies, "product structure", "products"},
    {&transl_tk::SubPool::m_TriStrips, "facets", "triStrips"},
    {&transl_tk::SubPool::m_SpotWelds, "spot welds", "spotWelds"},
    {&transl_tk::SubPool::m_CartesianCoords, "coordinate systems", "cartesianCoords"},
    {&transl_tk::SubPool::m_Annotations, "annotations", "annotations"},
};

} // namespace keld

#endif
