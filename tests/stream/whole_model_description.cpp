#include "stream/whole_model_description.h"

#include "stream/product_stream.h"

#include <keld-transl/product/units.h>
#include <keld-transl/reporting/html_logger_entry.h>
#include <keld-transl/reporting/logger_policy.h>

#include <bit>

namespace tests {

using namespace transl_tk;

namespace {

using Whole = WholeModelDescription;

std::uint64_t bits(double value)
{
    return std::bit_cast<std::uint64_t>(value);
}

Whole::Value describe(IValue * value)
{
    if (value == nullptr)
        return {};
    Whole::Value described;
    described.type = value->getType();
    char * text = nullptr;
    int number = 0;
    bool flag = false;
    double real = 0;
    unsigned char byte = 0;
    switch (described.type) {
    case 1:
        value->getValue(text);
        described.text = text;
        break;
    case 2:
        value->getValue(number);
        described.bits = static_cast<unsigned>(number);
        break;
    case 3:
        value->getValue(flag);
        described.bits = flag;
        break;
    case 5:
        value->getValue(real);
        described.bits = bits(real);
        break;
    default:
        value->getValue(byte);
        described.bits = byte;
    }
    return described;
}

template <class Holder> std::vector<Whole::Value> valuesOf(Holder const & holder)
{
    std::vector<Whole::Value> values;
    for (int i = 0; i < holder.getNumValues(); ++i)
        values.push_back(describe(holder.getValue(i)));
    return values;
}

template <class Holder> std::vector<Whole::Reference> referencesOf(Holder & holder)
{
    std::vector<Whole::Reference> references;
    holder.forEachEntity(
        [](Base * entity, void * list) {
            static_cast<std::vector<Whole::Reference> *>(list)->emplace_back(
                entity->getId(), entity->getEntityKind());
            return true;
        },
        &references);
    return references;
}

/// Describes the nodes of one part after the other.
class NodeDescriber
{
public:
    explicit NodeDescriber(Whole & model) : m_Model(model) {}

    void describeTree(Part & part, Whole::Part & described)
    {
        std::map<int, Node *> objects;
        for (Node * const node : childrenOf(part.getNodeTree(), &NodeTree::forEachNode)) {
            described.topNodes.push_back(node->getId());
            describeNode(*node, described, objects);
        }
        for (auto const & [id, node] : objects)
            m_Model.nodesOfSeveralParts += !m_Objects.insert(node).second;
    }

private:
    void describeNode(Node & node, Whole::Part & part, std::map<int, Node *> & objects)
    {
        auto const [place, isNew] = objects.try_emplace(node.getId(), &node);
        m_Model.isOneNodePerId = m_Model.isOneNodePerId && place->second == &node;
        if (!isNew)
            return;
        Whole::Node described;
        described.type = node.getType();
        described.entities = referencesOf(node);
        node.forEachProperty(
            [](char const * name, IValue * value, void * list) {
                static_cast<decltype(described.properties) *>(list)->emplace_back(name,
                                                                                  describe(value));
                return true;
            },
            &described.properties);
        if (described.type == 1) {
            auto & branch = static_cast<Branch &>(node);
            described.tag = branch.getTag();
            described.name = branch.getName();
            for (Node * const child : childrenOf(&branch, &Branch::forEachNode)) {
                described.children.push_back(child->getId());
                describeNode(*child, part, objects);
            }
        } else {
            for (Parameter * const each :
                 childrenOf(static_cast<Leaf *>(&node), &Leaf::forEachParameter))
                described.parameters.emplace_back(each->getParam(), valuesOf(*each));
        }
        part.nodes[node.getId()] = described;
    }

    Whole & m_Model;
    std::set<Node *> m_Objects;
};

Whole::Hierarchy describe(Hierarchy & hierarchy)
{
    Whole::Hierarchy described;
    double transform[16];
    hierarchy.getTransform(transform);
    for (std::size_t i = 0; i < 16; ++i)
        described.transform[i] = bits(transform[i]);
    if (Assembly * const parent = hierarchy.getParent())
        described.parent = parent->getId();
    return described;
}

Whole::Component describe(Component & component)
{
    Units & units = *component.getUnits();
    return {describe(static_cast<Hierarchy &>(component)),
            component.getName(),
            component.getFirstLabel(),
            component.getSecondLabel(),
            units.getLengthType(),
            bits(units.getLengthScale()),
            units.getAngularType(),
            bits(units.getAngularScale())};
}

Whole::Annotation describe(Annotation & annotation)
{
    Whole::Annotation described;
    for (auto const get : {&Annotation::getFirstTriple, &Annotation::getSecondTriple,
                           &Annotation::getThirdTriple, &Annotation::getFourthTriple}) {
        double triple[3];
        (annotation.*get)(triple[0], triple[1], triple[2]);
        for (double const value : triple)
            described.values.push_back(bits(value));
    }
    for (unsigned i = 0; i < 3 * annotation.getNumPoints(); ++i)
        described.values.push_back(bits(annotation.getPoints()[i]));
    for (auto const get : {&Annotation::getFirstInts, &Annotation::getSecondInts,
                           &Annotation::getThirdInts, &Annotation::getFourthInts}) {
        int ints[3];
        (annotation.*get)(ints[0], ints[1], ints[2]);
        described.numbers.insert(described.numbers.end(), std::begin(ints), std::end(ints));
    }
    for (auto const get :
         {&Annotation::getFirstNumber, &Annotation::getSecondNumber, &Annotation::getThirdNumber,
          &Annotation::getFourthNumber, &Annotation::getFifthNumber})
        described.numbers.push_back((annotation.*get)());
    described.texts = {annotation.getFirstText(), annotation.getSecondText()};
    return described;
}

void describeHierarchies(Whole & model)
{
    NodeDescriber nodes(model);
    currentSubPool().m_Hierarchies.m_Entities.forEach([&](int id, Base * entity) {
        auto & hierarchy = static_cast<Hierarchy &>(*entity);
        if (auto * const assembly = dynamic_cast<Assembly *>(&hierarchy)) {
            model.assemblies[id] = {describe(static_cast<Component &>(*assembly)),
                                    idsOf(assembly, &Assembly::forEachChild)};
        } else if (auto * const part = dynamic_cast<Part *>(&hierarchy)) {
            Whole::Part & described = model.parts[id];
            described.component = describe(static_cast<Component &>(*part));
            described.label = part->getPartLabel();
            nodes.describeTree(*part, described);
            described.lists = {
                idsOf(part, &Part::forEachBody),     idsOf(part, &Part::forEachPoint),
                idsOf(part, &Part::forEachSpotWeld), idsOf(part, &Part::forEachCartesianCoord),
                idsOf(part, &Part::forEachTriStrip), idsOf(part, &Part::forEachCurve),
                idsOf(part, &Part::forEachEdge),     idsOf(part, &Part::forEachAnnotation)};
        } else {
            auto & instance = dynamic_cast<Instance &>(hierarchy);
            model.instances[id] = {describe(hierarchy), instance.getComponent()->getId()};
        }
    });
}

} // namespace

WholeModelDescription descriptionOfWholeModel()
{
    SubPool & pool = currentSubPool();
    Whole model;
    model.topology = descriptionOfModel();
    pool.m_Annotations.m_Entities.forEach([&](int id, Base * entity) {
        model.annotations[id] = describe(static_cast<Annotation &>(*entity));
    });
    describeHierarchies(model);
    for (Attribute * const attribute : pool.m_Attributes)
        model.attributes.push_back({attribute->getName(), attribute->getType(),
                                    valuesOf(*attribute), referencesOf(*attribute)});
    for (HtmlLoggerEntry * const entry : pool.m_LoggerEntries)
        model.reportEntries.push_back(
            {entry->getText(), entry->getEntityType(), entry->getEntryType()});
    model.texts = pool.m_TextList;
    model.facesToSplit = pool.m_FacesToSplit;
    for (int list = 1; list <= 6; ++list)
        pool._logger()->for_each_entry(
            list,
            [](char const * text, cad::ILoggerPolicy::SubType const & subType, bool const & shown,
               void * entries) {
                static_cast<std::vector<Whole::LogEntry> *>(entries)->push_back(
                    {text, subType, shown});
                return true;
            },
            &model.log[static_cast<std::size_t>(list)]);
    return model;
}

} // namespace tests
