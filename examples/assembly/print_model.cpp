#include "print_model.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/attributes/branch.h>
#include <keld-transl/attributes/leaf.h>
#include <keld-transl/attributes/node_tree.h>
#include <keld-transl/attributes/parameter.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/product/traverse_hierarchy.h>
#include <keld-transl/reporting/html_logger_entry.h>

#include <algorithm>
#include <charconv>
#include <vector>

namespace assembly {

namespace {

using transl_tk::Annotation;
using transl_tk::Attribute;
using transl_tk::Base;
using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::HtmlLoggerEntry;
using transl_tk::IValue;
using transl_tk::Node;
using transl_tk::Parameter;

std::string text(double number)
{
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof(digits), number).ptr};
}

std::string text(double const * numbers, std::size_t count)
{
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += (i > 0 ? " " : "") + text(numbers[i]);
    return result;
}

/// A value must be read as the type that it has.
std::string text(IValue * value)
{
    enum ValueType { Text = 1, Integer, Flag, Float, Double, Byte };
    switch (value != nullptr ? value->getType() : 0) {
    case Text: {
        char * words = nullptr;
        value->getValue(words);
        return "\"" + std::string(words) + "\"";
    }
    case Integer: {
        int number = 0;
        value->getValue(number);
        return std::to_string(number);
    }
    case Flag: {
        bool flag = false;
        value->getValue(flag);
        return flag ? "true" : "false";
    }
    case Double: {
        double number = 0;
        value->getValue(number);
        return text(number);
    }
    case Byte: {
        unsigned char byte = 0;
        value->getValue(byte);
        return "byte " + std::to_string(byte);
    }
    default:
        return "nothing";
    }
}

/// The values of an attribute or a parameter.
template <class Holder> std::string valuesText(Holder & holder)
{
    std::string result;
    for (int i = 0; i < holder.getNumValues(); ++i)
        result += " " + text(holder.getValue(i));
    return result;
}

/// Ids of entities, sorted: an attribute keeps them in no particular order.
class Ids
{
public:
    static bool collect(Base * entity, void * ids)
    {
        static_cast<Ids *>(ids)->m_Ids.push_back(entity->getId());
        return true;
    }

    std::string text()
    {
        std::sort(m_Ids.begin(), m_Ids.end());
        std::string result;
        for (int const id : m_Ids)
            result += " " + std::to_string(id);
        return result;
    }

private:
    std::vector<int> m_Ids;
};

/// Writes a parameter tree, a node a line. This one is small: a tree that anybody may have made is
/// better walked without recursion.
class NodeText
{
public:
    explicit NodeText(std::size_t indent) : m_Indent(indent) {}

    static bool write(Node * node, void * self)
    {
        static_cast<NodeText *>(self)->writeNode(*node);
        return true;
    }

    std::string result;

private:
    void writeNode(Node & node)
    {
        constexpr int Branch = 1;
        result += std::string(m_Indent, ' ') + std::to_string(node.getId()) + ":";
        m_Indent += 2;
        if (node.getType() == Branch) {
            auto & branch = static_cast<transl_tk::Branch &>(node);
            result += " " + std::string(branch.getName()) + ", tag " +
                      std::to_string(branch.getTag()) + common(node) + "\n";
            branch.forEachNode(write, this);
        } else {
            static_cast<transl_tk::Leaf &>(node).forEachParameter(
                [](Parameter * parameter, void * user) {
                    static_cast<NodeText *>(user)->result += " parameter " +
                                                             std::to_string(parameter->getParam()) +
                                                             valuesText(*parameter) + ";";
                    return true;
                },
                this);
            result += common(node) + "\n";
        }
        m_Indent -= 2;
    }

    static std::string common(Node & node)
    {
        std::string properties;
        node.forEachProperty(
            [](char const * name, IValue * value, void * user) {
                *static_cast<std::string *>(user) += " " + std::string(name) + " " + text(value);
                return true;
            },
            &properties);
        Ids ids;
        node.forEachEntity(Ids::collect, &ids);
        std::string const entities = ids.text();
        return properties + (entities.empty() ? "" : ", on" + entities);
    }

    std::size_t m_Indent;
};

/// Writes the product tree.
class TreeText
{
public:
    std::string write(Hierarchy * top)
    {
        transl_tk::TraverseHierarchy walk;
        walk.setPreActionCB([](Hierarchy * node, void * self) {
            static_cast<TreeText *>(self)->enter(*node);
            return true;
        });
        walk.setPostActionCB([](Hierarchy *, void * self) {
            --static_cast<TreeText *>(self)->m_Depth;
            return true;
        });
        walk.traverse(top, this);
        return m_Result;
    }

private:
    void enter(Hierarchy & node)
    {
        std::string const indent(2 * ++m_Depth, ' ');
        double transform[16];
        node.getTransform(transform);
        m_Result += indent + std::to_string(node.getId()) + ": " + Hierarchy::name(&node) +
                    detail(node) + "\n" + indent + "    at " + text(transform, 16) + "\n";
        if (node.getHierarchyType() == Hierarchy::Part) {
            NodeText nodes(indent.size() + 4);
            static_cast<transl_tk::Part &>(node).getNodeTree()->forEachNode(NodeText::write,
                                                                            &nodes);
            m_Result += nodes.result;
        }
    }

    static std::string detail(Hierarchy & node)
    {
        if (node.getHierarchyType() == Hierarchy::Instance)
            return " (instance of " +
                   std::to_string(
                       static_cast<transl_tk::Instance &>(node).getComponent()->getId()) +
                   ")";
        auto & component = static_cast<Component &>(node);
        bool const isPart = node.getHierarchyType() == Hierarchy::Part;
        std::string const label = isPart ? static_cast<transl_tk::Part &>(node).getPartLabel() : "";
        return std::string(isPart ? " (part" : " (assembly") + ", " +
               text(component.getUnits()->getUnitsPerMetre()) + " units a metre, labels \"" +
               component.getFirstLabel() + "\" \"" + component.getSecondLabel() + "\" \"" + label +
               "\")";
    }

    std::string m_Result;
    std::size_t m_Depth = 0;
};

std::string attributeText(Attribute & attribute)
{
    Ids ids;
    attribute.forEachEntity(Ids::collect, &ids);
    return "  " + std::string(attribute.getName()) + ", type " +
           std::to_string(attribute.getType()) + ":" + valuesText(attribute) + ", on" + ids.text() +
           "\n";
}

std::string annotationText(Annotation & annotation)
{
    double place[3];
    annotation.getFirstTriple(place[0], place[1], place[2]);
    return "  " + std::to_string(annotation.getId()) + ": \"" + annotation.getFirstText() +
           "\", \"" + annotation.getSecondText() + "\" at " + text(place, 3) + ", leader " +
           text(annotation.getPoints(), 3 * std::size_t{annotation.getNumPoints()}) + "\n";
}

} // namespace

std::string modelText(transl_tk::SubPool const & model)
{
    std::string result = "products\n";
    std::vector<Hierarchy *> tops;
    Hierarchy::gatherTopLevelHierarchies(tops);
    for (Hierarchy * const top : tops)
        result += TreeText().write(top);
    result += "attributes\n";
    for (Attribute * const attribute : model.m_Attributes)
        result += attributeText(*attribute);
    result += "annotations\n";
    for (auto const & [id, entity] : model.m_Annotations.m_Entities)
        result += annotationText(static_cast<Annotation &>(*entity));
    result += "report entries\n";
    for (HtmlLoggerEntry * const entry : model.m_LoggerEntries)
        result += "  " + HtmlLoggerEntry::baseToStringMapping(entry->getEntityType()) + ", type " +
                  std::to_string(entry->getEntryType()) + ": " + entry->getText() + "\n";
    return result;
}

} // namespace assembly
