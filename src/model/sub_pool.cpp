#include "attributes/attribute_access.h"
#include "geom/ownerless.h"
#include "model/entity.h"
#include "model/user_set.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/model/sub_pool.h>
#include <keld-transl/product/hierarchy.h>
#include <keld-transl/reporting/html_logger_entry.h>
#include <keld-transl/reporting/logger.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/cartesian_coord.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/spot_weld.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/tri_strip.h>
#include <keld-transl/topology/uv_curve.h>
#include <keld-transl/topology/vertex.h>

#include <algorithm>
#include <array>

namespace transl_tk {

namespace {

/// Destroys the entities of a store in ascending order of ids. Entities leave the store as they go
/// and may take others of their kind along, so each is looked up before.
template <class Entity> void destroyAll(EntityStore & store)
{
    IdTree const & tree = TableAccess::tree(store.m_Entities);
    std::array<IdTree::Entry, 128> batch;
    for (long long next = INT_MIN; next <= INT_MAX;) {
        std::size_t const count = tree.copyFrom(static_cast<int>(next), batch.data(), batch.size());
        if (count == 0)
            return;
        // Entities of sparse ids lie far apart in memory: they are fetched together.
        for (std::size_t i = 0; i < count; ++i)
            __builtin_prefetch(batch[i].value, 1);
        for (std::size_t i = 0; i < count; ++i)
            if (tree.find(batch[i].id) == batch[i].value)
                Entity::destruct(static_cast<Entity *>(static_cast<Base *>(batch[i].value)));
        next = batch[count - 1].id + 1LL;
    }
}

/// Destroys the product structure: from the top, parts before assemblies, and then what has a
/// parent though nobody above it goes, as a ring of assemblies has.
void destroyHierarchies(EntityStore & store)
{
    IdTree const & tree = TableAccess::tree(store.m_Entities);
    for (auto const type : {Hierarchy::Part, Hierarchy::Assembly}) {
        std::vector<IdTree::Entry> top;
        store.m_Entities.forEach([&](int id, Base * entity) {
            auto * const node = static_cast<Hierarchy *>(entity);
            if (node->getHierarchyType() == type && node->getParent() == nullptr)
                top.push_back({id, entity});
        });
        for (IdTree::Entry const & entry : top)
            if (tree.find(entry.id) == entry.value)
                Hierarchy::destruct(static_cast<Hierarchy *>(static_cast<Base *>(entry.value)));
    }
    destroyAll<Hierarchy>(store);
}

/// Buckets of the set of names at first, and again when it has become empty.
constexpr std::size_t InitialBuckets = 8;

} // namespace

unsigned int SubPool::m_AvailableId = 0;

SubPool::SubPool() : m_Logger(new Logger), m_Names(InitialBuckets) {}

SubPool::SubPool(SubPool const &) = default;
SubPool & SubPool::operator=(SubPool const &) = default;

SubPool::~SubPool()
{
    clear();
    geom::freeOwnerless(this);
    delete m_Logger;
    for (EntityStore * const store : {&m_Curves3D, &m_Surfaces, &m_Vertices, &m_Edges})
        forgetUsers(*store);
}

cad::ILoggerPolicy * SubPool::_logger()
{
    return m_Logger;
}

void SubPool::inactiveLogger()
{
    delete m_Logger;
    m_Logger = nullptr;
    m_Logger = new cad::LoggerInactive;
}

unsigned int SubPool::GetAvailableId()
{
    return m_AvailableId++;
}

void SubPool::clear()
{
    CurrentSubPool::Clearing const clearing(this);
    destroyHierarchies(m_Hierarchies);
    destroyAll<Body>(m_Bodies);
    destroyAll<Shell>(m_Shells);
    destroyAll<Face>(m_Faces);
    destroyAll<Surface>(m_Surfaces);
    destroyAll<Loop>(m_Loops);
    destroyAll<Fin>(m_Fins);
    destroyAll<UVCurve>(m_UVCurves);
    destroyAll<Edge>(m_Edges);
    destroyAll<Vertex>(m_Vertices);
    destroyAll<Curve3D>(m_Curves3D);
    destroyAll<TriStrip>(m_TriStrips);
    destroyAll<Point3D>(m_Points);
    destroyAll<SpotWeld>(m_SpotWelds);
    destroyAll<CartesianCoord>(m_CartesianCoords);
    destroyAll<Annotation>(m_Annotations);
    std::vector<Attribute *> attributes;
    attributes.swap(m_Attributes);
    for (Attribute * const attribute : attributes)
        AttributeAccess::free(attribute);
    for (HtmlLoggerEntry * const entry : m_LoggerEntries)
        HtmlLoggerEntry::destruct(entry);
    m_LoggerEntries.clear();
    if (m_Logger != nullptr)
        m_Logger->clear();
}

void SubPool::uniqueName(std::string & name)
{
    if (m_Names.insert(name).second)
        return;
    if (auto const suffix = name.rfind('@'); suffix != std::string::npos)
        name.erase(suffix);
    std::string const stem = name + '@';
    for (unsigned long long counter = 1;; ++counter) {
        name = stem + std::to_string(counter);
        if (m_Names.insert(name).second)
            return;
    }
}

void SubPool::eraseName(std::string const & name)
{
    if (m_Names.erase(name) != 0 && m_Names.empty())
        m_Names = std::unordered_set<std::string>(InitialBuckets);
}

bool SubPool::findFaceToSplit(int id)
{
    return std::binary_search(m_FacesToSplit.begin(), m_FacesToSplit.end(), id);
}

} // namespace transl_tk
