#include "model/entity_kinds.h"

#include <keld-transl/model/base.h>

namespace transl_tk {

EntityStore SubPool::*storeOfKind(int kind) noexcept
{
    switch (kind) {
    case EntityKindBody:
        return &SubPool::m_Bodies;
    case EntityKindCurve3D:
        return &SubPool::m_Curves3D;
    case EntityKindUVCurve:
        return &SubPool::m_UVCurves;
    case EntityKindEdge:
        return &SubPool::m_Edges;
    case EntityKindFace:
        return &SubPool::m_Faces;
    case EntityKindFin:
        return &SubPool::m_Fins;
    case EntityKindHierarchy:
        return &SubPool::m_Hierarchies;
    case EntityKindLoop:
        return &SubPool::m_Loops;
    case EntityKindPoint3D:
        return &SubPool::m_Points;
    case EntityKindCartesianCoord:
        return &SubPool::m_CartesianCoords;
    case EntityKindShell:
        return &SubPool::m_Shells;
    case EntityKindSurface:
        return &SubPool::m_Surfaces;
    case EntityKindTriStrip:
        return &SubPool::m_TriStrips;
    case EntityKindVertex:
        return &SubPool::m_Vertices;
    case EntityKindSpotWeld:
        return &SubPool::m_SpotWelds;
    case EntityKindAnnotation:
        return &SubPool::m_Annotations;
    default:
        return nullptr;
    }
}

EntityLink EntityLink::to(Base & entity)
{
    return {&entity, entity.getEntityKind(), entity.getId()};
}

Base * EntityLink::get(SubPool const & subPool) const noexcept
{
    EntityStore SubPool::*const store = storeOfKind(kind);
    if (store == nullptr || (subPool.*store).m_Entities.lookup(id) != entity)
        return nullptr;
    return entity;
}

} // namespace transl_tk
