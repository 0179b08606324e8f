#ifndef KELD_TRANSL_EXCHANGE_RECORDS_LINKS_H
#define KELD_TRANSL_EXCHANGE_RECORDS_LINKS_H

#include "exchange/read_session.h"
#include "exchange/stream_reader.h"
#include "model/entity.h"

#include <keld-transl/model/sub_pool.h>

#include <string>

namespace transl_tk {

class Annotation;
class Body;
class CartesianCoord;
class Curve3D;
class Edge;
class Face;
class Fin;
class Hierarchy;
class Loop;
class Point3D;
class Shell;
class SpotWeld;
class Surface;
class TriStrip;
class UVCurve;
class Vertex;

/// Where entities of a class are looked up, and what they are called in an error.
struct EntityPlace
{
    EntityKind kind;
    EntityStore SubPool::*store;
    char const * name;
};

template <class Entity> inline constexpr EntityPlace PlaceOf{};
template <>
inline constexpr EntityPlace PlaceOf<Annotation>{EntityKindAnnotation, &SubPool::m_Annotations,
                                                 "annotation"};
template <> inline constexpr EntityPlace PlaceOf<Body>{EntityKindBody, &SubPool::m_Bodies, "body"};
template <>
inline constexpr EntityPlace PlaceOf<CartesianCoord>{
    EntityKindCartesianCoord, &SubPool::m_CartesianCoords, "coordinate system"};
template <>
inline constexpr EntityPlace PlaceOf<Hierarchy>{EntityKindHierarchy, &SubPool::m_Hierarchies,
                                                "hierarchy"};
template <>
inline constexpr EntityPlace PlaceOf<Point3D>{EntityKindPoint3D, &SubPool::m_Points, "point"};
template <>
inline constexpr EntityPlace PlaceOf<SpotWeld>{EntityKindSpotWeld, &SubPool::m_SpotWelds,
                                               "spot weld"};
template <>
inline constexpr EntityPlace PlaceOf<TriStrip>{EntityKindTriStrip, &SubPool::m_TriStrips, "facets"};
template <>
inline constexpr EntityPlace PlaceOf<Curve3D>{EntityKindCurve3D, &SubPool::m_Curves3D, "curve"};
template <>
inline constexpr EntityPlace PlaceOf<UVCurve>{EntityKindUVCurve, &SubPool::m_UVCurves, "UV curve"};
template <>
inline constexpr EntityPlace PlaceOf<Surface>{EntityKindSurface, &SubPool::m_Surfaces, "surface"};
template <>
inline constexpr EntityPlace PlaceOf<Vertex>{EntityKindVertex, &SubPool::m_Vertices, "vertex"};
template <> inline constexpr EntityPlace PlaceOf<Edge>{EntityKindEdge, &SubPool::m_Edges, "edge"};
template <> inline constexpr EntityPlace PlaceOf<Fin>{EntityKindFin, &SubPool::m_Fins, "fin"};
template <> inline constexpr EntityPlace PlaceOf<Loop>{EntityKindLoop, &SubPool::m_Loops, "loop"};
template <> inline constexpr EntityPlace PlaceOf<Face>{EntityKindFace, &SubPool::m_Faces, "face"};
template <>
inline constexpr EntityPlace PlaceOf<Shell>{EntityKindShell, &SubPool::m_Shells, "shell"};

/// Stands in the stream where the model has no entity.
constexpr int NoEntity = -1;

/// The entity of that id in the model, null when there is none.
template <class Entity> Entity * lookUp(SubPool & subPool, int id)
{
    void * const entity = TableAccess::tree((subPool.*PlaceOf<Entity>.store).m_Entities).find(id);
    return static_cast<Entity *>(static_cast<Base *>(entity));
}

/// The same, where `NoEntity` stands for none.
template <class Entity> Entity * resolve(SubPool & subPool, int id)
{
    return id != NoEntity ? lookUp<Entity>(subPool, id) : nullptr;
}

/// Notes that an entity of the model gets an owner. Fails when somebody owns it already: the model
/// would free it twice.
template <class Entity> void takeOwnership(StreamReader const & reader, int id)
{
    constexpr EntityPlace Place = PlaceOf<Entity>;
    if (char const * const reason = reader.session().own(Place.kind, Place.store, id))
        reader.fail("the " + std::string(Place.name) + " " + std::to_string(id) + " " + reason);
}

/// `resolve` for an entity that gets an owner.
template <class Entity> Entity * resolveOwned(StreamReader const & reader, int id)
{
    Entity * const entity = resolve<Entity>(reader.session().subPool(), id);
    if (entity != nullptr)
        takeOwnership<Entity>(reader, id);
    return entity;
}

/// Puts the ids of a parent's children, counted; a null child is `NoEntity`.
template <class Sink, class List> void putIds(Sink & sink, List const & children)
{
    std::size_t const count = children.size();
    sink.count(count);
    if constexpr (Sink::CountsOnly)
        sink.records(count, 4);
    else
        for (std::size_t i = 0; i < count; ++i)
            sink.i32(children[i] != nullptr ? children[i]->getId() : NoEntity);
}

/// Reads what `putIds` put, and hands each child that is there to `add`, which gives it an owner.
template <class Child, class Add> void readChildren(StreamReader & reader, Add add)
{
    for (std::size_t left = reader.count(4); left != 0; --left) {
        int id = 0;
        reader.i32(id);
        if (Child * const child = resolveOwned<Child>(reader, id))
            add(child);
    }
}

} // namespace transl_tk

#endif
