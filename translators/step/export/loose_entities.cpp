#include "export/loose_entities.h"

#include "export/listed.h"

#include <keld-transl/model/point3d.h>
#include <keld-transl/model/sub_pool.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/tri_strip.h>

#include <unordered_set>

namespace step {

namespace {

using transl_tk::Base;
using transl_tk::EntityStore;

class Owned
{
public:
    template <class Entity, class Owner>
    void add(Owner & owner, bool (Owner::*forEach)(bool (*)(Entity *, void *), void *))
    {
        for (Entity * const entity : listed(owner, forEach))
            m_Entities.insert(entity);
    }
    void add(Base const * entity) { m_Entities.insert(entity); }
    bool contains(Base const * entity) const { return m_Entities.contains(entity); }

private:
    std::unordered_set<Base const *> m_Entities;
};

template <class Entity> std::vector<Entity *> othersThan(Owned const & owned, EntityStore & store)
{
    std::vector<Entity *> result;
    store.m_Entities.forEach([&](int, Base * entity) {
        if (!owned.contains(entity))
            result.push_back(static_cast<Entity *>(entity));
    });
    return result;
}

template <class Entity, class Visit> void visitAll(EntityStore & store, Visit && visit)
{
    store.m_Entities.forEach([&](int, Base * entity) { visit(*static_cast<Entity *>(entity)); });
}

void addThoseOfParts(transl_tk::SubPool & model, Owned & owned)
{
    using transl_tk::Part;
    visitAll<transl_tk::Hierarchy>(model.m_Hierarchies, [&](transl_tk::Hierarchy & node) {
        if (node.getHierarchyType() != transl_tk::Hierarchy::Part)
            return;
        auto & part = static_cast<Part &>(node);
        owned.add(part, &Part::forEachBody);
        owned.add(part, &Part::forEachEdge);
        owned.add(part, &Part::forEachCurve);
        owned.add(part, &Part::forEachPoint);
        owned.add(part, &Part::forEachTriStrip);
    });
}

} // namespace

LooseEntities::LooseEntities(transl_tk::SubPool & model)
{
    using namespace transl_tk;
    Owned owned;
    addThoseOfParts(model, owned);
    visitAll<Body>(model.m_Bodies, [&](Body & body) {
        owned.add(body, &Body::forEachShell);
        owned.add(body, &Body::forEachTriStrip);
    });
    visitAll<Shell>(model.m_Shells, [&](Shell & shell) { owned.add(shell, &Shell::forEachFace); });
    visitAll<Fin>(model.m_Fins, [&](Fin & fin) { owned.add(fin.getEdge()); });
    visitAll<Edge>(model.m_Edges, [&](Edge & edge) { owned.add(edge.getCurve()); });
    bodies = othersThan<Body>(owned, model.m_Bodies);
    shells = othersThan<Shell>(owned, model.m_Shells);
    faces = othersThan<Face>(owned, model.m_Faces);
    edges = othersThan<Edge>(owned, model.m_Edges);
    curves = othersThan<Curve3D>(owned, model.m_Curves3D);
    points = othersThan<Point3D>(owned, model.m_Points);
    strips = othersThan<TriStrip>(owned, model.m_TriStrips);
}

} // namespace step
