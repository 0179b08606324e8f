#include "model/entity.h"
#include "product/proxy_component.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/attributes/node_tree.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/cartesian_coord.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/spot_weld.h>
#include <keld-transl/topology/tri_strip.h>

#include <vector>

namespace transl_tk {

namespace {

/// What a part lists of one kind.
template <class Entity> class Contents
{
public:
    void add(Entity * entity)
    {
        if (entity == nullptr)
            return;
        m_Ids.push_back(entity->getId());
        m_Entities.push_back(entity);
    }

    bool forEach(bool (*callback)(Entity *, void *), void * user) const
    {
        // The callback may add more.
        for (std::size_t i = 0; i < m_Entities.size(); ++i)
            if (!callback(m_Entities[i], user))
                return false;
        return true;
    }

    /// Frees the entities. Those that something else has freed, as an edge does with its curve, and
    /// those that stand here a second time are gone by then: their ids tell.
    void destroy(EntityStore SubPool::*store)
    {
        for (std::size_t i = 0; i < m_Entities.size(); ++i)
            if (CurrentSubPool::holds(store, m_Ids[i], m_Entities[i]))
                Entity::destruct(m_Entities[i]);
    }

private:
    std::vector<Entity *> m_Entities;
    std::vector<int> m_Ids;
};

class ProxyPart final : public ComponentOf<Part>, public Pooled<ProxyPart>
{
public:
    ProxyPart(int id, char const * name) : ComponentOf(id, name), m_NodeTree(NodeTree::create()) {}
    ProxyPart(ProxyPart const &) = delete;
    ProxyPart & operator=(ProxyPart const &) = delete;
    ~ProxyPart() override;

    Type getHierarchyType() override { return Hierarchy::Part; }

    NodeTree * getNodeTree() override { return m_NodeTree; }
    char const * getPartLabel() override { return m_PartLabel.c_str(); }
    void setPartLabel(char const * label) override { m_PartLabel = textOrEmpty(label); }

    bool forEachAnnotation(bool (*callback)(Annotation *, void *), void * user) override
    {
        return m_Annotations.forEach(callback, user);
    }
    bool forEachEdge(bool (*callback)(Edge *, void *), void * user) override
    {
        return m_Edges.forEach(callback, user);
    }
    bool forEachCurve(bool (*callback)(Curve3D *, void *), void * user) override
    {
        return m_Curves.forEach(callback, user);
    }
    bool forEachTriStrip(bool (*callback)(TriStrip *, void *), void * user) override
    {
        return m_TriStrips.forEach(callback, user);
    }
    bool forEachCartesianCoord(bool (*callback)(CartesianCoord *, void *), void * user) override
    {
        return m_CartesianCoords.forEach(callback, user);
    }
    bool forEachSpotWeld(bool (*callback)(SpotWeld *, void *), void * user) override
    {
        return m_SpotWelds.forEach(callback, user);
    }
    bool forEachPoint(bool (*callback)(Point3D *, void *), void * user) override
    {
        return m_Points.forEach(callback, user);
    }
    bool forEachBody(bool (*callback)(Body *, void *), void * user) override
    {
        return m_Bodies.forEach(callback, user);
    }

    void addAnnotation(Annotation * annotation) override { m_Annotations.add(annotation); }
    void addEdge(Edge * edge) override { m_Edges.add(edge); }
    void addCurve(Curve3D * curve) override { m_Curves.add(curve); }
    void addTriStrip(TriStrip * strip) override { m_TriStrips.add(strip); }
    void addCartesianCoord(CartesianCoord * coord) override { m_CartesianCoords.add(coord); }
    void addSpotWeld(SpotWeld * weld) override { m_SpotWelds.add(weld); }
    void addPoint(Point3D * point) override { m_Points.add(point); }
    void addBody(Body * body) override { m_Bodies.add(body); }

private:
    NodeTree * m_NodeTree;
    std::string m_PartLabel;
    Contents<Body> m_Bodies;
    Contents<Point3D> m_Points;
    Contents<SpotWeld> m_SpotWelds;
    Contents<TriStrip> m_TriStrips;
    Contents<Curve3D> m_Curves;
    Contents<Edge> m_Edges;
    Contents<CartesianCoord> m_CartesianCoords;
    Contents<Annotation> m_Annotations;
};

ProxyPart::~ProxyPart()
{
    leaveParent();
    keepParent(nullptr);
    NodeTree::destruct(m_NodeTree);
    m_Bodies.destroy(&SubPool::m_Bodies);
    m_Points.destroy(&SubPool::m_Points);
    m_SpotWelds.destroy(&SubPool::m_SpotWelds);
    m_TriStrips.destroy(&SubPool::m_TriStrips);
    m_Curves.destroy(&SubPool::m_Curves3D);
    m_CartesianCoords.destroy(&SubPool::m_CartesianCoords);
    m_Annotations.destroy(&SubPool::m_Annotations);
    endInstances();
}

} // namespace

Part * Part::create(int const & id, char const * name)
{
    return createEntity<ProxyPart>(&SubPool::m_Hierarchies, id, name);
}

Part::~Part() = default;

} // namespace transl_tk
