#include "model_json.h"

#include "entity_kinds.h"
#include "model_summary.h"
#include "parameter_json.h"
#include "product_tree.h"
#include "report_json.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/cartesian_coord.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/spot_weld.h>
#include <keld-transl/topology/tri_strip.h>

#include <nlohmann/json.hpp>
#include <unordered_map>

namespace keld {

using nlohmann::ordered_json;
using transl_tk::Annotation;
using transl_tk::Attribute;
using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::Part;
using transl_tk::SubPool;

namespace {

constexpr int FormatVersion = 1;

ordered_json countsJson(SubPool const & model)
{
    ordered_json counts = ordered_json::object();
    for (EntityKindRow const & kind : EntityKinds)
        counts[kind.key] = (model.*kind.store).m_Entities.size();
    counts["attributes"] = model.m_Attributes.size();
    return counts;
}

ordered_json shapesJson(std::vector<ShapeCount> const & shapes)
{
    ordered_json counts = ordered_json::object();
    for (auto const & [name, count] : shapes)
        counts[name] = count;
    return counts;
}

ordered_json boxJson(SubPool const & model)
{
    Box const box = boxAroundPoints(model);
    if (box.empty)
        return {};
    return {{"low", jsonNumbers(box.low, 3)}, {"high", jsonNumbers(box.high, 3)}};
}

ordered_json unitsJson(transl_tk::Units & units)
{
    return {{"lengthType", static_cast<int>(units.getLengthType())},
            {"lengthScale", jsonNumber(units.getLengthScale())},
            {"angularType", static_cast<int>(units.getAngularType())},
            {"angularScale", jsonNumber(units.getAngularScale())},
            {"unitsPerMetre", jsonNumber(units.getUnitsPerMetre())}};
}

template <class Entity> bool appendId(Entity * entity, void * ids)
{
    static_cast<ordered_json *>(ids)->push_back(entity->getId());
    return true;
}

/// The ids of what one of a part's lists holds.
template <class Entity>
ordered_json idsOf(Part & part, bool (Part::*walk)(bool (*callback)(Entity *, void *), void * user))
{
    ordered_json ids = ordered_json::array();
    (part.*walk)(appendId<Entity>, &ids);
    return ids;
}

ordered_json contentsJson(Part & part)
{
    return {{"bodies", idsOf(part, &Part::forEachBody)},
            {"points", idsOf(part, &Part::forEachPoint)},
            {"spotWelds", idsOf(part, &Part::forEachSpotWeld)},
            {"triStrips", idsOf(part, &Part::forEachTriStrip)},
            {"curves", idsOf(part, &Part::forEachCurve)},
            {"edges", idsOf(part, &Part::forEachEdge)},
            {"cartesianCoords", idsOf(part, &Part::forEachCartesianCoord)},
            {"annotations", idsOf(part, &Part::forEachAnnotation)}};
}

void addComponent(Component & component, ordered_json & product)
{
    product["units"] = unitsJson(*component.getUnits());
    product["firstLabel"] = component.getFirstLabel();
    product["secondLabel"] = component.getSecondLabel();
    if (component.getHierarchyType() != Hierarchy::Part)
        return;
    auto & part = static_cast<Part &>(component);
    product["partLabel"] = part.getPartLabel();
    product["contents"] = contentsJson(part);
}

ordered_json productJson(ProductNode const & node, ordered_json const & parent)
{
    Hierarchy & hierarchy = *node.hierarchy;
    double transform[16];
    hierarchy.getTransform(transform);
    ordered_json product = {{"id", hierarchy.getId()},
                            {"type", typeName(hierarchy)},
                            {"name", shownName(hierarchy)},
                            {"level", node.level},
                            {"parent", parent},
                            {"transform", jsonNumbers(transform, 16)}};
    if (Component * const placed = placedComponent(hierarchy))
        product["component"] = placed->getId();
    else
        addComponent(static_cast<Component &>(hierarchy), product);
    return product;
}

void writeProducts(std::vector<ProductNode> const & nodes, JsonOutput & output)
{
    output.beginArray("products");
    std::vector<int> path; // ids from the top to the node before
    for (ProductNode const & node : nodes) {
        path.resize(node.level);
        output.element(
            productJson(node, path.empty() ? ordered_json() : ordered_json(path.back())));
        path.push_back(node.hierarchy->getId());
    }
    output.endArray();
}

void writeParameterTrees(std::vector<ProductNode> const & nodes, JsonOutput & output)
{
    output.beginArray("parameterTrees");
    for (ProductNode const & node : nodes) {
        if (node.hierarchy->getHierarchyType() != Hierarchy::Part)
            continue;
        ordered_json tree = {{"part", node.hierarchy->getId()}};
        if (addParameterTree(*static_cast<Part *>(node.hierarchy)->getNodeTree(), tree))
            output.element(tree);
    }
    output.endArray();
}

void writeAttributes(SubPool const & model, JsonOutput & output)
{
    output.beginArray("attributes");
    for (Attribute * const attribute : model.m_Attributes) {
        ordered_json entities = ordered_json::array();
        attribute->forEachEntity(appendEntity, &entities);
        output.element({{"name", attribute->getName()},
                        {"type", static_cast<int>(attribute->getType())},
                        {"values", valuesJson(*attribute)},
                        {"entities", std::move(entities)}});
    }
    output.endArray();
}

ordered_json triple(Annotation & annotation,
                    void (Annotation::*get)(double & x, double & y, double & z))
{
    double values[3];
    (annotation.*get)(values[0], values[1], values[2]);
    return jsonNumbers(values, 3);
}

ordered_json triple(Annotation & annotation, void (Annotation::*get)(int & a, int & b, int & c))
{
    int values[3];
    (annotation.*get)(values[0], values[1], values[2]);
    return values;
}

ordered_json annotationJson(Annotation & annotation)
{
    ordered_json points = ordered_json::array();
    for (unsigned int i = 0; i < annotation.getNumPoints(); ++i)
        points.push_back(jsonNumbers(annotation.getPoints() + 3 * std::size_t{i}, 3));
    return {
        {"id", annotation.getId()},
        {"triples",
         {triple(annotation, &Annotation::getFirstTriple),
          triple(annotation, &Annotation::getSecondTriple),
          triple(annotation, &Annotation::getThirdTriple),
          triple(annotation, &Annotation::getFourthTriple)}},
        {"points", std::move(points)},
        {"integers",
         {triple(annotation, &Annotation::getFirstInts),
          triple(annotation, &Annotation::getSecondInts),
          triple(annotation, &Annotation::getThirdInts),
          triple(annotation, &Annotation::getFourthInts)}},
        {"numbers",
         {annotation.getFirstNumber(), annotation.getSecondNumber(), annotation.getThirdNumber(),
          annotation.getFourthNumber(), annotation.getFifthNumber()}},
        {"texts", {annotation.getFirstText(), annotation.getSecondText()}}};
}

void writeAnnotations(SubPool const & model, JsonOutput & output)
{
    output.beginArray("annotations");
    model.m_Annotations.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        output.element(annotationJson(*static_cast<Annotation *>(entity)));
    });
    output.endArray();
}

} // namespace

void writeModelJson(std::string const & file, RunOutcome const & outcome, SubPool & model,
                    JsonOutput & output)
{
    output.member("format", "keld model");
    output.member("version", FormatVersion);
    output.member("file", file);
    output.member("status", statusJson(outcome));
    output.member("counts", countsJson(model));
    output.member("curveKinds", shapesJson(curveKinds(model)));
    output.member("surfaceKinds", shapesJson(surfaceKinds(model)));
    output.member("box", boxJson(model));
    std::vector<ProductNode> const nodes = productTree();
    writeProducts(nodes, output);
    writeParameterTrees(nodes, output);
    writeAttributes(model, output);
    writeAnnotations(model, output);
    output.member("textList", model.m_TextList);
    output.member("facesToSplit", model.m_FacesToSplit);
    writeEntriesJson(reportEntries(model), output);
    writeLogJson(logLines(model), output);
    output.end();
}

} // namespace keld
