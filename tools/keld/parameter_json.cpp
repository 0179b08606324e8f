#include "parameter_json.h"

#include <keld-transl/attributes/branch.h>
#include <keld-transl/attributes/leaf.h>
#include <keld-transl/attributes/parameter.h>

#include <map>
#include <unordered_set>
#include <vector>

namespace keld {

using nlohmann::ordered_json;
using transl_tk::Branch;
using transl_tk::IValue;
using transl_tk::Leaf;
using transl_tk::Node;
using transl_tk::Parameter;

namespace {

enum ValueType : int { Text = 1, Integer, Flag, Float, Double, Byte };
constexpr int BranchType = 1;

template <class Content> Content contentOf(IValue & value)
{
    Content content{};
    value.getValue(content);
    return content;
}

bool appendNode(Node * node, void * nodes)
{
    static_cast<std::vector<Node *> *>(nodes)->push_back(node);
    return true;
}

/// The properties of a node, by name: their own order is none.
ordered_json propertiesJson(Node & node)
{
    std::map<std::string, ordered_json> values;
    node.forEachProperty(
        [](char const * name, IValue * value, void * user) {
            (*static_cast<std::map<std::string, ordered_json> *>(user))[name] = valueJson(value);
            return true;
        },
        &values);
    ordered_json properties = ordered_json::array();
    for (auto const & [name, value] : values) {
        ordered_json property = {{"name", name}};
        property.update(value);
        properties.push_back(std::move(property));
    }
    return properties;
}

bool appendParameter(Parameter * parameter, void * parameters)
{
    static_cast<ordered_json *>(parameters)
        ->push_back({{"parameter", static_cast<int>(parameter->getParam())},
                     {"values", valuesJson(*parameter)}});
    return true;
}

ordered_json idsOf(std::vector<Node *> const & nodes)
{
    ordered_json ids = ordered_json::array();
    for (Node * const node : nodes)
        ids.push_back(node->getId());
    return ids;
}

/// A node, with its children in `children`.
ordered_json nodeJson(Node & node, std::vector<Node *> & children)
{
    bool const isBranch = node.getType() == BranchType;
    ordered_json result = {{"id", node.getId()}, {"type", isBranch ? "branch" : "leaf"}};
    if (isBranch) {
        auto & branch = static_cast<Branch &>(node);
        branch.forEachNode(appendNode, &children);
        result["tag"] = static_cast<int>(branch.getTag());
        result["name"] = branch.getName();
        result["children"] = idsOf(children);
    } else {
        ordered_json parameters = ordered_json::array();
        static_cast<Leaf &>(node).forEachParameter(appendParameter, &parameters);
        result["parameters"] = std::move(parameters);
    }
    result["properties"] = propertiesJson(node);
    ordered_json entities = ordered_json::array();
    node.forEachEntity(appendEntity, &entities);
    result["entities"] = std::move(entities);
    return result;
}

} // namespace

ordered_json valueJson(IValue * value)
{
    auto const typed = [](char const * type, ordered_json const & content) -> ordered_json {
        return {{"type", type}, {"value", content}};
    };
    switch (value != nullptr ? value->getType() : 0) {
    case Text:
        return typed("text", contentOf<char *>(*value));
    case Integer:
        return typed("int", contentOf<int>(*value));
    case Flag:
        return typed("bool", contentOf<bool>(*value));
    case Float:
        return typed("float", jsonNumber(contentOf<float>(*value)));
    case Double:
        return typed("double", jsonNumber(contentOf<double>(*value)));
    case Byte:
        return typed("byte", contentOf<unsigned char>(*value));
    default:
        return {{"type", nullptr}, {"value", nullptr}};
    }
}

bool appendEntity(transl_tk::Base * entity, void * user)
{
    static_cast<ordered_json *>(user)->push_back(
        {{"kind", entity->getEntityKind()}, {"id", entity->getId()}});
    return true;
}

bool addParameterTree(transl_tk::NodeTree & tree, ordered_json & object)
{
    std::vector<Node *> top;
    tree.forEachNode(appendNode, &top);
    if (top.empty())
        return false;
    object["top"] = idsOf(top);

    // Nodes nest deeper than the stack may be, and one may hang in several places.
    ordered_json nodes = ordered_json::array();
    std::unordered_set<Node *> seen;
    std::vector<Node *> open(top.rbegin(), top.rend());
    while (!open.empty()) {
        Node * const node = open.back();
        open.pop_back();
        if (!seen.insert(node).second)
            continue;
        std::vector<Node *> children;
        nodes.push_back(nodeJson(*node, children));
        open.insert(open.end(), children.rbegin(), children.rend());
    }
    object["nodes"] = std::move(nodes);
    return true;
}

} // namespace keld
