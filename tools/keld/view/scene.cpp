#include "view/scene.h"

#include "view/colours.h"

#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/tri_strip.h>

#include <unordered_set>

namespace keld::view {

namespace {

using transl_tk::Assembly;
using transl_tk::Base;
using transl_tk::Body;
using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::Instance;
using transl_tk::Part;
using transl_tk::TriStrip;

/// The assembly that the toolkit puts above several tops.
constexpr int IdOfMadeAssembly = -1;

template <class Entity, class Owner>
std::vector<Entity *> listOf(Owner & owner,
                             bool (Owner::*forEach)(bool (*)(Entity *, void *), void *))
{
    std::vector<Entity *> found;
    (owner.*forEach)(
        [](Entity * entity, void * list) {
            if (entity != nullptr)
                static_cast<std::vector<Entity *> *>(list)->push_back(entity);
            return true;
        },
        &found);
    return found;
}

bool isPlacedByInstances(Hierarchy & node)
{
    return node.getHierarchyType() != Hierarchy::Instance &&
           !static_cast<Component &>(node).forEachInstance([](Instance *, void *) { return false; },
                                                           nullptr);
}

bool isMade(Hierarchy & node)
{
    return node.getId() == IdOfMadeAssembly && node.getHierarchyType() == Hierarchy::Assembly &&
           node.getParent() == nullptr;
}

Placement placementOf(Hierarchy & node)
{
    double t[16];
    node.getTransform(t);
    return {{Triple{t[0], t[1], t[2]}, Triple{t[4], t[5], t[6]}, Triple{t[8], t[9], t[10]}},
            {t[12], t[13], t[14]}};
}

/// A mesh without triangles, for a strip that has none.
Mesh meshOf(TriStrip & strip)
{
    Mesh mesh;
    float * vertices = nullptr;
    float * normals = nullptr;
    unsigned char * colours = nullptr;
    int * indices = nullptr;
    int vertexCount = 0;
    int normalCount = 0;
    int indexCount = 0;
    strip.getData(vertices, colours, vertexCount, normals, normalCount, indices, indexCount);
    if (vertices == nullptr || vertexCount < 1)
        return mesh;
    mesh.vertices = vertices;
    mesh.vertexCount = static_cast<std::size_t>(vertexCount);
    mesh.normals = normalCount >= vertexCount ? normals : nullptr;
    mesh.colours = colours;
    if (indices != nullptr && indexCount > 0) {
        mesh.indices = indices;
        mesh.indexCount = static_cast<std::size_t>(indexCount);
    }
    return mesh;
}

/// A mesh of a part, and the colour of its body.
struct Facets
{
    std::size_t mesh = 0;
    std::optional<Colour> colour;
};

class Gathering
{
public:
    Gathering(transl_tk::SubPool & model, SceneLimits const & limits)
        : m_Model(model), m_Limits(limits), m_Colours(model)
    {}

    Scene run()
    {
        std::vector<Hierarchy *> nodes;
        m_Model.m_Hierarchies.m_Entities.forEach(
            [&](int, Base * node) { nodes.push_back(static_cast<Hierarchy *>(node)); });
        for (Hierarchy * const node : nodes) {
            if (node->getHierarchyType() == Hierarchy::Part)
                addPart(static_cast<Part &>(*node));
        }
        addLoose();
        if (m_Scene.meshes.empty())
            return std::move(m_Scene);
        std::unordered_set<Hierarchy const *> placed;
        for (Hierarchy * const node : nodes) {
            if (isMade(*node) || isPlacedByInstances(*node))
                placed.insert(node);
            if (node->getHierarchyType() == Hierarchy::Assembly && !isMade(*node)) {
                auto const children =
                    listOf(static_cast<Assembly &>(*node), &Assembly::forEachChild);
                placed.insert(children.begin(), children.end());
            }
        }
        for (Hierarchy * const node : nodes) {
            if (placed.count(node) == 0)
                walk(*node);
        }
        return std::move(m_Scene);
    }

private:
    /// A node to visit, at the place of what it stands in; or the end of an assembly.
    struct Step
    {
        Hierarchy * node = nullptr;
        Placement outer;
        std::optional<Colour> colour;
        bool isEnd = false;
    };

    void addPart(Part & part)
    {
        auto const colour = m_Colours.of(&part);
        std::vector<Facets> & facets = m_Parts[&part];
        for (Body * const body : listOf(part, &Part::forEachBody)) {
            m_Bodies.insert(body);
            addBody(*body, colour, facets);
        }
        for (TriStrip * const strip : listOf(part, &Part::forEachTriStrip))
            addStrip(*strip, std::nullopt, colour, facets);
    }

    void addBody(Body & body, std::optional<Colour> const & partColour,
                 std::vector<Facets> & facets)
    {
        auto const colour = m_Colours.of(&body);
        for (TriStrip * const strip : listOf(body, &Body::forEachTriStrip))
            addStrip(*strip, colour, colour ? colour : partColour, facets);
        m_Scene.hasShells = m_Scene.hasShells || !listOf(body, &Body::forEachShell).empty();
    }

    void addStrip(TriStrip & strip, std::optional<Colour> const & colour,
                  std::optional<Colour> const & inherited, std::vector<Facets> & facets)
    {
        m_Strips.insert(&strip);
        Mesh mesh = meshOf(strip);
        mesh.inherited = inherited;
        mesh.measure();
        if (mesh.triangles == 0)
            return;
        facets.push_back({m_Scene.meshes.size(), colour});
        m_Scene.meshes.push_back(mesh);
    }

    /// What belongs to no part.
    void addLoose()
    {
        std::vector<Facets> loose;
        m_Model.m_Bodies.m_Entities.forEach([&](int, Base * body) {
            if (m_Bodies.count(body) == 0)
                addBody(static_cast<Body &>(*body), std::nullopt, loose);
        });
        m_Model.m_TriStrips.m_Entities.forEach([&](int, Base * strip) {
            if (m_Strips.count(strip) == 0)
                addStrip(static_cast<TriStrip &>(*strip), std::nullopt, std::nullopt, loose);
        });
        place(loose, {}, std::nullopt);
    }

    // Assemblies nest deeper than the stack may be, and instances may close a ring.
    void walk(Hierarchy & top)
    {
        std::vector<Step> open = {{&top, {}, std::nullopt, false}};
        std::unordered_set<Hierarchy const *> entered;
        while (!open.empty()) {
            Step const step = open.back();
            open.pop_back();
            if (step.isEnd) {
                entered.erase(step.node);
                continue;
            }
            if (m_Nodes == m_Limits.nodes) {
                m_Scene.complete = false;
                return;
            }
            ++m_Nodes;
            visit(step, open, entered);
        }
    }

    void visit(Step const & step, std::vector<Step> & open,
               std::unordered_set<Hierarchy const *> & entered)
    {
        Placement const placement = step.outer * placementOf(*step.node);
        auto const own = m_Colours.of(step.node);
        Hierarchy * component = step.node;
        auto colour = own ? own : step.colour;
        if (component->getHierarchyType() == Hierarchy::Instance) {
            component = static_cast<Instance &>(*component).getComponent();
            if (component == nullptr)
                return;
            if (!own)
                colour = m_Colours.of(component) ? m_Colours.of(component) : colour;
        }
        if (component->getHierarchyType() == Hierarchy::Part) {
            place(m_Parts[component], placement, colour);
            return;
        }
        if (!entered.insert(component).second)
            return;
        open.push_back({component, {}, std::nullopt, true});
        auto const children = listOf(static_cast<Assembly &>(*component), &Assembly::forEachChild);
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            open.push_back({*child, placement, colour, false});
    }

    void place(std::vector<Facets> const & facets, Placement const & placement,
               std::optional<Colour> const & colour)
    {
        for (Facets const & placed : facets) {
            Mesh const & mesh = m_Scene.meshes[placed.mesh];
            std::size_t const work =
                std::max({mesh.triangles, mesh.vertexCount / 3, mesh.indexCount / 3});
            if (work > m_Limits.triangles - m_Work) {
                m_Scene.complete = false;
                continue;
            }
            Box box = m_Scene.box;
            bool isSensible = true;
            for (unsigned i = 0; i < 8; ++i) {
                Triple const corner = placement.applied(mesh.box.corner(i));
                for (double const coordinate : corner)
                    isSensible = isSensible && std::abs(coordinate) <= FarthestCoordinate;
                box.add(corner);
            }
            if (!isSensible)
                continue;
            m_Scene.box = box;
            m_Work += work;
            m_Scene.triangles += mesh.triangles;
            m_Scene.occurrences.push_back(
                {placed.mesh, placement,
                 placed.colour ? *placed.colour : colour.value_or(UsualColour)});
        }
    }

    transl_tk::SubPool & m_Model;
    SceneLimits m_Limits;
    SurfaceColours m_Colours;
    Scene m_Scene;
    std::unordered_map<Hierarchy const *, std::vector<Facets>> m_Parts;
    std::unordered_set<Base const *> m_Bodies;
    std::unordered_set<Base const *> m_Strips;
    std::size_t m_Nodes = 0;
    std::size_t m_Work = 0; ///< triangles, as the limit counts them
};

} // namespace

Scene gatherScene(transl_tk::SubPool & model, SceneLimits const & limits)
{
    return Gathering(model, limits).run();
}

} // namespace keld::view
