#include "stream/random_whole_model.h"

#include "stream/product_stream.h"

#include <keld-transl/product/units.h>
#include <keld-transl/reporting/html_logger_entry.h>
#include <keld-transl/reporting/logger_policy.h>

#include <algorithm>
#include <functional>

namespace tests {

using namespace transl_tk;

std::set<std::string> featuresOfWholeModels;

namespace {

using Whole = WholeModelDescription;

/// Decides on a model, makes it, and keeps beside it what it must tell.
class ModelMaker
{
public:
    ModelMaker(std::vector<std::uint64_t> const & list, ShapeMaker & shapes)
        : m_Decisions(list), m_Shapes(shapes)
    {
        makeShapes(randomShapes(m_Decisions, 6), m_Shapes);
        repeat(4, [this] { addGeometry(); });
        repeat(4, [this] { addTopology(); });
        repeat(4, [this] { addAnnotation(); });
        repeat(5, [this] { addPart(); });
        repeat(5, [this] { addAssembly(); });
        repeat(8, [this] { addInstance(); });
        repeat(16, [this] { moveHierarchy(); });
        repeat(5, [this] { addAttribute(); });
        repeat(4, [this] { addReportEntry(); });
        repeat(6, [this] { addLogEntry(); });
        repeat(3, [this] { m_Made.texts.push_back(text()); });
        currentSubPool().m_TextList = m_Made.texts;
        // The size, which is asked first, sorts the list and drops what stands in it twice.
        std::set<int> faces;
        repeat(4, [&] { faces.insert(m_Decisions.below(6)); });
        m_Made.facesToSplit.assign(faces.begin(), faces.end());
        auto & given = currentSubPool().m_FacesToSplit;
        given.assign(faces.rbegin(), faces.rend());
        given.insert(given.end(), faces.begin(), faces.end());
        repeat(3, [this] { destroyAPoint(); });
        finishNodes();
        for (auto & [id, assembly] : m_Made.assemblies)
            assembly.children = visibleChildren(id);
        m_Made.topology = descriptionOfModel();
    }

    /// What the model tells once its size has been asked.
    Whole const & made() const { return m_Made; }

private:
    static constexpr double Identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    static std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }

    void repeat(int limit, std::function<void()> const & add)
    {
        for (int left = m_Decisions.below(limit + 1); left > 0; --left)
            add();
    }

    void note(bool condition, char const * feature)
    {
        if (condition)
            featuresOfWholeModels.insert(feature);
    }

    /// An id that the store does not use: often the next one, sometimes any.
    int freeId(EntityStore SubPool::*store)
    {
        int id = m_Decisions.below(3) == 0 ? m_Decisions.id() : 1;
        while ((currentSubPool().*store).m_Entities.lookup(id) != nullptr)
            id = id < 1000000 && id > 0 ? id + 1 : 1;
        return id;
    }

    /// One of the entities of a store or, now and then, null.
    Base * pick(EntityStore SubPool::*store)
    {
        EntityTable const & entities = (currentSubPool().*store).m_Entities;
        if (entities.empty() || m_Decisions.below(6) == 0)
            return nullptr;
        return std::next(entities.begin(), m_Decisions.below(static_cast<int>(entities.size())))
            ->second;
    }
    template <class Entity> Entity * pick(EntityStore SubPool::*store)
    {
        return static_cast<Entity *>(pick(store));
    }

    /// Gives some of the entities that nobody owns to `add`; their ids.
    template <class Child, class Parent>
    std::vector<int> adopt(Parent * parent, void (Parent::*add)(Child *),
                           EntityStore SubPool::*store)
    {
        std::vector<int> ids;
        for (int left = m_Decisions.below(4); left > 0; --left) {
            auto * const child = pick<Child>(store);
            if (child == nullptr || !m_Owned.insert(child).second)
                continue;
            (parent->*add)(child);
            ids.push_back(child->getId());
        }
        return ids;
    }

    std::string text()
    {
        switch (m_Decisions.below(5)) {
        case 0:
            return "";
        case 1:
            return std::string(static_cast<std::size_t>(1 + m_Decisions.below(5000)), 'n');
        case 2:
            return "\xC3\xA4\xFF\x01<&>";
        case 3:
            return "part@1";
        default:
            return "part";
        }
    }

    void addGeometry()
    {
        Point3D::create(freeId(&SubPool::m_Points), m_Decisions.value(), m_Decisions.value(), 3);
        SpotWeld * const weld =
            SpotWeld::create(freeId(&SubPool::m_SpotWelds), 1, m_Decisions.value(), 3);
        repeat(2, [&] { weld->addWeldName(text().c_str()); });
        double const third[3] = {m_Decisions.value(), 1, 2};
        CartesianCoord::create(freeId(&SubPool::m_CartesianCoords), L, A, B, third);
        int const id = freeId(&SubPool::m_TriStrips);
        float const vertices[6] = {1, 2, 3, 4, 5, std::bit_cast<float>(m_Decisions.number())};
        int const indices[3] = {0, 1, m_Decisions.number()};
        TriStrip::create(id, vertices, nullptr, 2, nullptr, 0, indices, m_Decisions.below(4),
                         m_Decisions.flag());
    }

    void addTopology()
    {
        Vertex::create(freeId(&SubPool::m_Vertices), m_Decisions.value());
        Vertex::create(freeId(&SubPool::m_Vertices),
                       geom::Point::create(1, m_Decisions.value(), 3));
        Edge * const edge =
            Edge::create(freeId(&SubPool::m_Edges), pick<Curve3D>(&SubPool::m_Curves3D),
                         pick<Vertex>(&SubPool::m_Vertices), pick<Vertex>(&SubPool::m_Vertices),
                         m_Decisions.flag());
        Fin * const fin = Fin::create(freeId(&SubPool::m_Fins), edge, m_Decisions.flag());
        if (auto * const curve = pick<UVCurve>(&SubPool::m_UVCurves);
            curve != nullptr && m_Owned.insert(curve).second)
            fin->setUVCurve(curve);
        Loop * const loop = Loop::create(freeId(&SubPool::m_Loops));
        adopt(loop, &Loop::addFin, &SubPool::m_Fins);
        Face * const face =
            Face::create(freeId(&SubPool::m_Faces), pick<Surface>(&SubPool::m_Surfaces));
        face->setLabel(text().c_str());
        adopt(face, &Face::addLoop, &SubPool::m_Loops);
        Shell * const shell = Shell::create(freeId(&SubPool::m_Shells));
        adopt(shell, &Shell::addFace, &SubPool::m_Faces);
        Body * const body = Body::create(freeId(&SubPool::m_Bodies), text().c_str());
        adopt(body, &Body::addShell, &SubPool::m_Shells);
        adopt(body, &Body::addTriStrip, &SubPool::m_TriStrips);
    }

    void addAnnotation()
    {
        int const id = freeId(&SubPool::m_Annotations);
        Whole::Annotation & made = m_Made.annotations[id];
        double triples[4][3];
        for (auto & triple : triples)
            for (double & value : triple)
                made.values.push_back(bits(value = m_Decisions.value()));
        std::vector<double> points;
        for (int left = 3 * m_Decisions.below(4); left > 0; --left)
            made.values.push_back(bits(points.emplace_back(m_Decisions.value())));
        for (int left = 17; left > 0; --left)
            made.numbers.push_back(m_Decisions.number());
        made.texts = {text(), text()};
        int ints[4][3];
        for (std::size_t i = 0; i < 12; ++i)
            ints[i / 3][i % 3] = made.numbers[i];
        auto const & numbers = made.numbers;
        Annotation::create(id, triples[0], triples[1], triples[2], triples[3],
                           static_cast<int>(points.size() / 3), points.data(), ints[0], ints[1],
                           ints[2], ints[3], numbers[12], numbers[13], numbers[14], numbers[15],
                           numbers[16], made.texts[0].c_str(), made.texts[1].c_str());
    }

    /// A value of any type that can be written, or null.
    IValue * value(std::vector<Whole::Value> & made)
    {
        Whole::Value & described = made.emplace_back();
        constexpr int Types[] = {0, 1, 2, 3, 5, 6};
        described.type = Types[m_Decisions.below(6)];
        switch (described.type) {
        case 1:
            described.text = text();
            return IValue::create(described.text.c_str());
        case 2: {
            int const number = m_Decisions.number();
            described.bits = static_cast<unsigned>(number);
            return IValue::create(number);
        }
        case 3: {
            bool const flag = m_Decisions.flag();
            described.bits = flag;
            return IValue::create(flag);
        }
        case 5: {
            double const number = m_Decisions.value();
            described.bits = bits(number);
            return IValue::create(number);
        }
        case 6: {
            auto const byte = static_cast<unsigned char>(m_Decisions.number());
            described.bits = byte;
            return IValue::create(byte);
        }
        default:
            return nullptr;
        }
    }

    /// Hangs `holder` on entities of any kind.
    template <class Holder> std::vector<Whole::Reference> hang(Holder & holder)
    {
        std::vector<Whole::Reference> references;
        for (int left = m_Decisions.below(6); left > 0; --left) {
            auto const kinds = static_cast<int>(std::size(EveryStore));
            Base * const entity = pick(EveryStore[m_Decisions.below(kinds)]);
            if (entity == nullptr)
                continue;
            holder.addEntity(entity);
            references.emplace_back(entity->getId(), entity->getEntityKind());
            featuresOfWholeModels.insert("hangs on kind " +
                                         std::to_string(entity->getEntityKind()));
        }
        return references;
    }

    Whole::Hierarchy hierarchy(Hierarchy & hierarchy)
    {
        double transform[16];
        std::copy(std::begin(Identity), std::end(Identity), transform);
        switch (m_Decisions.below(4)) {
        case 1:
            transform[m_Decisions.below(4) + 1] = -0.0;
            featuresOfWholeModels.insert("negative zero in an identity");
            break;
        case 2:
            for (double & number : transform)
                number = m_Decisions.value();
            featuresOfWholeModels.insert("transform");
            break;
        default:
            break;
        }
        hierarchy.setTransform(transform);
        Whole::Hierarchy made;
        std::transform(std::begin(transform), std::end(transform), made.transform.begin(), bits);
        return made;
    }

    Whole::Component component(Component & component)
    {
        Whole::Component made;
        made.hierarchy = hierarchy(component);
        made.name = component.getName();
        note(made.name.find('@') != std::string::npos, "numbered name");
        made.firstLabel = text();
        made.secondLabel = text();
        made.lengthScale = made.angularScale = bits(1);
        component.setFirstLabel(made.firstLabel.c_str());
        component.setSecondLabel(made.secondLabel.c_str());
        if (m_Decisions.flag()) {
            made.lengthType = m_Decisions.number();
            made.angularType = m_Decisions.number();
            double const length = m_Decisions.value();
            double const angle = m_Decisions.value();
            made.lengthScale = bits(length);
            made.angularScale = bits(angle);
            component.setUnits(Units::create(static_cast<Units::LengthType>(made.lengthType),
                                             static_cast<Units::AngularType>(made.angularType),
                                             length, angle));
        }
        return made;
    }

    void addPart()
    {
        int const id = freeId(&SubPool::m_Hierarchies);
        Part * const part = Part::create(id, text().c_str());
        Whole::Part & made = m_Made.parts[id];
        made.component = component(*part);
        made.label = text();
        part->setPartLabel(made.label.c_str());
        addNodes(*part, made);
        made.lists = {adopt(part, &Part::addBody, &SubPool::m_Bodies),
                      adopt(part, &Part::addPoint, &SubPool::m_Points),
                      adopt(part, &Part::addSpotWeld, &SubPool::m_SpotWelds),
                      adopt(part, &Part::addCartesianCoord, &SubPool::m_CartesianCoords),
                      adopt(part, &Part::addTriStrip, &SubPool::m_TriStrips),
                      adopt(part, &Part::addCurve, &SubPool::m_Curves3D),
                      adopt(part, &Part::addEdge, &SubPool::m_Edges),
                      adopt(part, &Part::addAnnotation, &SubPool::m_Annotations)};
        for (std::size_t i = 0; i < made.lists.size(); ++i)
            if (!made.lists[i].empty())
                featuresOfWholeModels.insert("part's list " + std::to_string(i));
    }

    /// Makes nodes from the bottom up, some of which hang in several places, and gives the part
    /// those that hang nowhere and some of other parts.
    void addNodes(Part & part, Whole::Part & made)
    {
        std::vector<Node *> nodes;
        std::set<Node *> hanging;
        for (int left = m_Decisions.below(7); left > 0; --left) {
            Node * const node = m_Decisions.flag() ? makeBranch(nodes, hanging) : makeLeaf();
            Whole::Node & described = m_Nodes.at(node->getId());
            described.entities = hang(*node);
            repeat(3, [&] {
                std::vector<Whole::Value> values;
                std::string const name = text() + std::to_string(described.properties.size());
                node->addProperty(name.c_str(), value(values));
                described.properties.emplace_back(name, values[0]);
            });
            nodes.push_back(node);
        }
        for (Node * const node : nodes)
            if (!hanging.contains(node) || m_Decisions.below(3) == 0)
                addTop(part, made, *node);
        if (!m_AllNodes.empty() && m_Decisions.flag())
            addTop(part, made, oneOf(m_AllNodes));
        m_AllNodes.insert(m_AllNodes.end(), nodes.begin(), nodes.end());
    }

    static void addTop(Part & part, Whole::Part & made, Node & node)
    {
        part.getNodeTree()->addNode(&node);
        made.topNodes.push_back(node.getId());
    }

    Node & oneOf(std::vector<Node *> const & nodes)
    {
        return *nodes[static_cast<std::size_t>(m_Decisions.below(static_cast<int>(nodes.size())))];
    }

    int nodeId()
    {
        int id = m_Decisions.below(3) == 0 ? m_Decisions.number() : 1;
        while (m_Nodes.contains(id))
            id = id < 1000000 ? id + 1 : 1;
        return id;
    }

    Node * makeBranch(std::vector<Node *> const & below, std::set<Node *> & hanging)
    {
        int const id = nodeId();
        Whole::Node & described = m_Nodes[id];
        described.type = 1;
        described.tag = m_Decisions.number();
        described.name = text();
        Branch * const branch =
            Branch::create(id, described.name.c_str(), static_cast<Branch::Tag>(described.tag));
        for (int left = below.empty() ? 0 : m_Decisions.below(4); left > 0; --left) {
            Node & child = oneOf(below);
            note(!hanging.insert(&child).second, "node in several places");
            branch->addNode(&child);
            described.children.push_back(child.getId());
        }
        return branch;
    }

    Node * makeLeaf()
    {
        int const id = nodeId();
        Whole::Node & described = m_Nodes[id];
        described.type = 2;
        Leaf * const leaf = Leaf::create(id);
        repeat(2, [&] {
            auto & [number, values] = described.parameters.emplace_back();
            number = m_Decisions.number();
            Parameter * const parameter = Parameter::create(static_cast<Parameter::Param>(number));
            for (int left = m_Decisions.below(4); left > 0; --left)
                parameter->addValue(value(values));
            leaf->addParameter(parameter);
        });
        return leaf;
    }

    /// Gives every part the descriptions of the nodes that it reaches.
    void finishNodes()
    {
        std::map<int, int> partsOf;
        for (auto & [id, part] : m_Made.parts) {
            std::vector<int> reached = part.topNodes;
            while (!reached.empty()) {
                int const node = reached.back();
                reached.pop_back();
                auto const & described = m_Nodes.at(node);
                if (part.nodes.emplace(node, described).second) {
                    reached.insert(reached.end(), described.children.begin(),
                                   described.children.end());
                    m_Made.nodesOfSeveralParts += partsOf[node]++ != 0;
                }
            }
        }
        note(m_Made.nodesOfSeveralParts != 0, "node of several parts");
    }

    void addAssembly()
    {
        int const id = freeId(&SubPool::m_Hierarchies);
        Assembly * const assembly = Assembly::create(id, text().c_str());
        m_Made.assemblies[id].component = component(*assembly);
        m_Assemblies.push_back(assembly);
    }

    void addInstance()
    {
        auto * const placed =
            dynamic_cast<Component *>(static_cast<Hierarchy *>(pick(&SubPool::m_Hierarchies)));
        if (placed == nullptr)
            return;
        int const id = freeId(&SubPool::m_Hierarchies);
        Instance * const instance = Instance::create(id, placed);
        m_Made.instances[id] = {hierarchy(*instance), placed->getId()};
    }

    Whole::Hierarchy & madeOf(int id)
    {
        if (m_Made.assemblies.contains(id))
            return m_Made.assemblies[id].component.hierarchy;
        return m_Made.parts.contains(id) ? m_Made.parts[id].component.hierarchy
                                         : m_Made.instances[id].hierarchy;
    }

    /// Adds a node to an assembly or takes it out of its own. Assemblies go into earlier ones only,
    /// so that there is no ring.
    void moveHierarchy()
    {
        auto * const node = pick<Hierarchy>(&SubPool::m_Hierarchies);
        if (node == nullptr || m_Assemblies.empty())
            return;
        int const id = node->getId();
        auto const own = std::find(m_Assemblies.begin(), m_Assemblies.end(), node);
        auto const limit = static_cast<int>(own != m_Assemblies.end() ? own - m_Assemblies.begin()
                                                                      : std::ssize(m_Assemblies));
        bool const isTakenOut = m_Decisions.below(4) == 1;
        if (limit == 0 && !isTakenOut)
            return;
        for (auto & [parent, children] : m_Children) {
            bool const isHere =
                std::erase_if(children, [&](auto const & each) { return each.first == id; }) != 0;
            if (isHere && isTakenOut) {
                auto * const assembly = static_cast<Assembly *>(
                    currentSubPool().m_Hierarchies.m_Entities.lookup(parent));
                assembly->removeChild(node);
                featuresOfWholeModels.insert("removed child");
            }
        }
        if (isTakenOut)
            return;
        Assembly * const parent = m_Assemblies[static_cast<std::size_t>(m_Decisions.below(limit))];
        auto & children = m_Children[parent->getId()];
        int const number = static_cast<int>(children.size());
        for (auto const & [child, its] : children)
            note(its == number, "two children with one number");
        parent->addChild(node);
        children.emplace_back(id, number);
        madeOf(id).parent = parent->getId();
        note(own != m_Assemblies.end(), "assembly in an assembly");
    }

    /// The first child of each number, in ascending order of numbers.
    std::vector<int> visibleChildren(int assembly)
    {
        std::map<int, int> firstOf;
        for (auto const & [child, number] : m_Children[assembly])
            firstOf.emplace(number, child);
        std::vector<int> visible;
        visible.reserve(firstOf.size());
        for (auto const & [number, child] : firstOf)
            visible.push_back(child);
        return visible;
    }

    void addAttribute()
    {
        Whole::Attribute & made = m_Made.attributes.emplace_back();
        made.name = text();
        made.type = m_Decisions.flag() ? m_Decisions.number() : m_Decisions.below(16);
        Attribute * const attribute =
            Attribute::create(made.name.c_str(), static_cast<Attribute::Type>(made.type));
        for (int left = m_Decisions.below(5); left > 0; --left)
            attribute->addValue(value(made.values));
        made.entities = hang(*attribute);
    }

    void addReportEntry()
    {
        auto const & made = m_Made.reportEntries.emplace_back(
            Whole::ReportEntry{text(), m_Decisions.below(36), m_Decisions.number()});
        HtmlLoggerEntry::create(made.text.c_str(),
                                static_cast<HtmlLoggerEntry::EntityType>(made.entityType),
                                static_cast<HtmlLoggerEntry::EntryType>(made.entryType));
    }

    void addLogEntry()
    {
        int const list = 1 + m_Decisions.below(6);
        Whole::LogEntry const made = {"log" + std::to_string(m_Decisions.below(10)),
                                      m_Decisions.below(4), m_Decisions.flag()};
        currentSubPool()._logger()->addEntry(made.text.c_str(), list,
                                             static_cast<cad::ILoggerPolicy::SubType>(made.subType),
                                             made.shown);
        m_Made.log[static_cast<std::size_t>(list)].push_back(made);
        featuresOfWholeModels.insert("log entry of type " + std::to_string(list));
    }

    /// Destroys a point that no part lists; attributes and nodes that hang on it forget it.
    void destroyAPoint()
    {
        auto * const point = pick<Point3D>(&SubPool::m_Points);
        if (point == nullptr || m_Owned.contains(point))
            return;
        Whole::Reference const dead = {point->getId(), point->getEntityKind()};
        Point3D::destruct(point);
        for (auto & [id, node] : m_Nodes)
            note(std::erase(node.entities, dead) != 0, "node on a dead point");
        for (Whole::Attribute & attribute : m_Made.attributes)
            note(std::erase(attribute.entities, dead) != 0, "attribute on a dead point");
    }

    Decisions m_Decisions;
    ShapeMaker & m_Shapes;
    Whole m_Made;
    std::set<Base *> m_Owned;
    std::map<int, Whole::Node> m_Nodes; ///< of all parts
    std::vector<Node *> m_AllNodes;
    std::vector<Assembly *> m_Assemblies;
    /// Ids of the children of each assembly with their order numbers, in order of adding.
    std::map<int, std::vector<std::pair<int, int>>> m_Children;
};

} // namespace

WholeModelDescription makeRandomWholeModel(std::vector<std::uint64_t> const & decisions,
                                           ShapeMaker & shapes)
{
    return ModelMaker(decisions, shapes).made();
}

} // namespace tests
