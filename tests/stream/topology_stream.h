#ifndef KELD_TESTS_STREAM_TOPOLOGY_STREAM_H
#define KELD_TESTS_STREAM_TOPOLOGY_STREAM_H

#include "stream/geometry_stream.h"
#include "stream/topology_records.h"

#include <keld-transl/geom/line.h>
#include <keld-transl/geom/plane.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/tri_strip.h>
#include <keld-transl/topology/vertex.h>

#include <set>
#include <vector>

namespace tests {

/// The children that `parent->*forEach` visits, null ones included.
template <class Parent, class Child>
std::vector<Child *> childrenOf(Parent * parent,
                                bool (Parent::*forEach)(bool (*)(Child *, void *), void *))
{
    std::vector<Child *> children;
    (parent->*forEach)(
        [](Child * child, void * list) {
            static_cast<std::vector<Child *> *>(list)->push_back(child);
            return true;
        },
        &children);
    return children;
}

/// Their ids, -1 for null.
template <class Parent, class Child>
std::vector<int> idsOf(Parent * parent, bool (Parent::*forEach)(bool (*)(Child *, void *), void *))
{
    std::vector<int> ids;
    for (Child * const child : childrenOf(parent, forEach))
        ids.push_back(child != nullptr ? child->getId() : -1);
    return ids;
}

inline constexpr transl_tk::EntityStore transl_tk::SubPool::*EveryStore[] = {
    &transl_tk::SubPool::m_TriStrips,   &transl_tk::SubPool::m_Points,
    &transl_tk::SubPool::m_SpotWelds,   &transl_tk::SubPool::m_CartesianCoords,
    &transl_tk::SubPool::m_Curves3D,    &transl_tk::SubPool::m_UVCurves,
    &transl_tk::SubPool::m_Surfaces,    &transl_tk::SubPool::m_Vertices,
    &transl_tk::SubPool::m_Edges,       &transl_tk::SubPool::m_Fins,
    &transl_tk::SubPool::m_Loops,       &transl_tk::SubPool::m_Faces,
    &transl_tk::SubPool::m_Shells,      &transl_tk::SubPool::m_Bodies,
    &transl_tk::SubPool::m_Annotations, &transl_tk::SubPool::m_Hierarchies,
};

/// The ids of all entities of the model, store by store.
inline std::vector<std::set<int>> idsOfModel()
{
    std::vector<std::set<int>> ids;
    for (auto const store : EveryStore) {
        std::set<int> & inStore = ids.emplace_back();
        (currentSubPool().*store).m_Entities.forEach([&](int id, transl_tk::Base *) {
            inStore.insert(id);
        });
    }
    return ids;
}

/// A model of facets and topology that is written to and read from segments.
class TopologyStream : public GeometryStream
{
protected:
    static transl_tk::Curve3D * makeCurve(int id)
    {
        return transl_tk::Curve3D::create(id, geom::Line::create(L, A, ofCurve()));
    }
    static transl_tk::Surface * makeSurface(int id)
    {
        return transl_tk::Surface::create(id, geom::Plane::create(L, A, B, Nowhere, ofU(), ofV()));
    }
    /// A degenerate spline with two points.
    static transl_tk::UVCurve * makeUVCurve(int id)
    {
        return transl_tk::UVCurve::create(
            id,
            geom::UVCurve::create(2, true, false, 2, Multiplicities, Knots, 2, OneToSix, nullptr));
    }
    static transl_tk::Vertex * makeVertex(int id)
    {
        return transl_tk::Vertex::create(id, geom::Point::create(1, 2, 3));
    }

    static transl_tk::TriStrip * strip(int id)
    {
        return entity<transl_tk::TriStrip>(&transl_tk::SubPool::m_TriStrips, id);
    }
    static transl_tk::Curve3D * carrierOfCurve(int id)
    {
        return entity<transl_tk::Curve3D>(&transl_tk::SubPool::m_Curves3D, id);
    }
    static transl_tk::UVCurve * carrierOfUVCurve(int id)
    {
        return entity<transl_tk::UVCurve>(&transl_tk::SubPool::m_UVCurves, id);
    }
    static transl_tk::Surface * carrierOfSurface(int id)
    {
        return entity<transl_tk::Surface>(&transl_tk::SubPool::m_Surfaces, id);
    }
    static transl_tk::Vertex * vertex(int id)
    {
        return entity<transl_tk::Vertex>(&transl_tk::SubPool::m_Vertices, id);
    }
    static transl_tk::Edge * edge(int id)
    {
        return entity<transl_tk::Edge>(&transl_tk::SubPool::m_Edges, id);
    }
    static transl_tk::Fin * fin(int id)
    {
        return entity<transl_tk::Fin>(&transl_tk::SubPool::m_Fins, id);
    }
    static transl_tk::Loop * loop(int id)
    {
        return entity<transl_tk::Loop>(&transl_tk::SubPool::m_Loops, id);
    }
    static transl_tk::Face * face(int id)
    {
        return entity<transl_tk::Face>(&transl_tk::SubPool::m_Faces, id);
    }
    static transl_tk::Shell * shell(int id)
    {
        return entity<transl_tk::Shell>(&transl_tk::SubPool::m_Shells, id);
    }
    static transl_tk::Body * body(int id)
    {
        return entity<transl_tk::Body>(&transl_tk::SubPool::m_Bodies, id);
    }
};

} // namespace tests

#endif
