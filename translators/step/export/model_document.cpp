#include "export/model_document.h"

#include "attribute_book.h"
#include "export/changed_shape.h"
#include "export/listed.h"
#include "export/loose_entities.h"
#include "export/part_entities.h"
#include "export/placing.h"
#include "export/unwritten.h"
#include "import/document.h"

#include <keld-transl/model/sub_pool.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-translator-kit/translator.h>

#include <BRep_Builder.hxx>
#include <TDataStd_Name.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Iterator.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <cmath>

namespace step {

namespace {

using transl_tk::Assembly;
using transl_tk::Base;
using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::HtmlLoggerEntry;
using transl_tk::Instance;
using transl_tk::Part;
using translator_kit::Failure;
using translator_kit::Reason;

/// The kernel goes down an assembly by recursion.
constexpr std::size_t DeepestAssembly = 500;

constexpr int BuildEnd = 40;

Handle(XCAFDoc_ShapeTool) toolOf(Handle(TDocStd_Document) const & document)
{
    return XCAFDoc_DocumentTool::ShapeTool(document->Main());
}

gp_Mat identity()
{
    gp_Mat result;
    result.SetIdentity();
    return result;
}

std::array<long long, 9> roundedOf(gp_Mat const & map)
{
    std::array<long long, 9> result{};
    for (int i = 0; i < 9; ++i)
        result[static_cast<std::size_t>(i)] = std::llround(1e9 * map(i / 3 + 1, i % 3 + 1));
    return result;
}

/// The label of `shape`, which stands in the shape of `product` or is all of it.
TDF_Label labelOf(TopoDS_Shape const & shape, TDF_Label const & product)
{
    if (shape.IsSame(XCAFDoc_ShapeTool::GetShape(product)))
        return product;
    return XCAFDoc_DocumentTool::ShapeTool(product)->AddSubShape(product, shape);
}

bool isPlaced(Component & component)
{
    return !component.forEachInstance([](Instance *, void *) { return false; }, nullptr);
}

} // namespace

ModelDocument::ModelDocument(transl_tk::SubPool & model, std::string fallbackName, double unit,
                             Coverage & coverage)
    : m_Model(model), m_FallbackName(std::move(fallbackName)), m_Coverage(coverage),
      m_Shapes(model, coverage), m_Facts(model, unit), m_Content(newDocument())
{}

void ModelDocument::build(translator_kit::Run & run)
{
    m_Run = &run;
    std::vector<Hierarchy *> tops;
    Hierarchy::gatherTopLevelHierarchies(tops);
    for (Hierarchy * const top : tops) {
        if (top->getHierarchyType() == Hierarchy::Instance ||
            !isPlaced(static_cast<Component &>(*top)))
            addTop(*top);
    }
    LooseEntities const loose(m_Model);
    addLoose(loose);
    toolOf(m_Content)->UpdateAssemblies();
    // Places have shapes from here on.
    for (auto const & [node, label] : m_Places)
        m_Facts.put(*node, label, m_Coverage);
    countUnwritten(m_Model, loose, m_Reached, m_Coverage);
    m_Facts.countLost(m_Coverage);
    run.progress(BuildEnd);
}

void ModelDocument::addTop(Hierarchy & node)
{
    if (node.getHierarchyType() != Hierarchy::Instance) {
        auto & component = static_cast<Component &>(node);
        auto const placing = placingOf(node, identity());
        if (placing && isIdentity(*placing)) {
            definitionOf(component, identity());
            return;
        }
    }
    // A document places nothing outside of assemblies.
    auto const tool = toolOf(m_Content);
    TDF_Label const label = addProduct(tool->NewShape(), {{}, "", m_FallbackName, ""});
    m_Coverage.changed(HtmlLoggerEntry::Assembly, "place on top as assembly with one component");
    place(node, identity(), label);
}

TDF_Label ModelDocument::definitionOf(Component & component, gp_Mat const & rest)
{
    Key const key = {&component, roundedOf(rest)};
    if (auto const known = m_Definitions.find(key); known != m_Definitions.end())
        return known->second;
    OutgoingProduct product = productOf(component);
    if (!isIdentity(rest)) {
        std::string const words = wordsOf(rest);
        m_Run->message("The product \"" + product.name + "\" also stands " + words +
                       ", which no place can say: it is written a second time, as \"" +
                       product.name + " (" + words + ")\".");
        product.name += " (" + words + ")";
        product.id += " (" + words + ")";
    }
    m_Reached.insert(&component);
    bool const isPart = component.getHierarchyType() == Hierarchy::Part;
    TDF_Label label;
    if (isPart) {
        auto & part = static_cast<Part &>(component);
        TopoDS_Shape & shape = m_PartShapes[&part];
        if (shape.IsNull())
            shape = m_Shapes.shapeOf(part);
        label = toolOf(m_Content)->NewShape();
        m_Definitions[key] = addProduct(label, product);
        m_Facts.put(component, label, m_Coverage);
        fillPart(part, rest, label);
    } else {
        label = toolOf(m_Content)->NewShape();
        m_Definitions[key] = addProduct(label, product);
        m_Facts.put(component, label, m_Coverage);
        if (m_Open.size() >= DeepestAssembly)
            throw Failure(Reason::ExportFailed, "The assembly \"" + product.name +
                                                    "\" stands more than " +
                                                    std::to_string(DeepestAssembly) +
                                                    " levels deep, deeper than can be written.");
        m_Open.insert(&component);
        addChildren(static_cast<Assembly &>(component), rest, label);
        m_Open.erase(&component);
    }
    if (!isIdentity(rest))
        m_Coverage.changed(isPart ? HtmlLoggerEntry::Part : HtmlLoggerEntry::Assembly,
                           wordsOf(rest) + " copy as a product of its own");
    else
        m_Coverage.exact(isPart ? HtmlLoggerEntry::Part : HtmlLoggerEntry::Assembly);
    return label;
}

void ModelDocument::fillPart(Part & part, gp_Mat const & rest, TDF_Label const & label)
{
    TopoDS_Shape const & shape = m_PartShapes[&part];
    std::map<Base const *, TopoDS_Shape> changed;
    if (isIdentity(rest) || !TopoDS_Iterator(shape).More()) {
        toolOf(m_Content)->SetShape(label, shape);
    } else {
        ChangedShape change(shape, rest);
        toolOf(m_Content)->SetShape(label, change.whole());
        for (Base * const entity : entitiesOf(part, m_Facts.hasFactsOfEdges())) {
            TopoDS_Shape const made = m_Shapes.madeFrom(*entity);
            if (!made.IsNull())
                changed[entity] = change.of(made);
        }
    }
    addSubShapes(part, label, changed);
}

void ModelDocument::addSubShapes(Part & part, TDF_Label const & label,
                                 std::map<Base const *, TopoDS_Shape> const & changed)
{
    for (Base * const entity : entitiesOf(part, m_Facts.hasFactsOfEdges())) {
        auto const other = changed.find(entity);
        TopoDS_Shape const shape =
            other == changed.end() ? m_Shapes.madeFrom(*entity) : other->second;
        if (shape.IsNull())
            continue;
        if (std::string const name = nameOf(*entity, part); !name.empty())
            m_Names.emplace_back(shape, name);
        if (m_Facts.hasFacts(*entity))
            m_Facts.put(*entity, labelOf(shape, label), m_Coverage);
    }
}

void ModelDocument::addChildren(Assembly & assembly, gp_Mat const & rest, TDF_Label const & label)
{
    for (Hierarchy * const child : listed(assembly, &Assembly::forEachChild))
        place(*child, rest, label);
}

void ModelDocument::place(Hierarchy & node, gp_Mat const & above, TDF_Label const & label)
{
    bool const isInstance = node.getHierarchyType() == Hierarchy::Instance;
    auto * const component =
        isInstance ? static_cast<Instance &>(node).getComponent() : static_cast<Component *>(&node);
    std::string const id = std::to_string(node.getId());
    if (component == nullptr || m_Open.contains(component)) {
        m_Coverage.lost(HtmlLoggerEntry::Instance, id,
                        component == nullptr ? "it places nothing"
                                             : "it places an assembly within itself");
        return;
    }
    auto const placing = placingOf(node, above);
    if (!placing) {
        m_Coverage.lost(HtmlLoggerEntry::Instance, id,
                        "its transform flattens its component, or is not finite");
        return;
    }
    TDF_Label const placed = toolOf(m_Content)->AddComponent(
        label, definitionOf(*component, placing->rest), TopLoc_Location(placing->move));
    if (!isInstance)
        return;
    std::string const name = m_Facts.text(node, InstanceNameAttribute, "instance name");
    TDataStd_Name::Set(placed, TCollection_ExtendedString(name.c_str(), true));
    m_Places.emplace_back(&node, placed);
    m_Coverage.exact(HtmlLoggerEntry::Instance);
}

void ModelDocument::addLoose(LooseEntities const & loose)
{
    BRep_Builder builder;
    TopoDS_Compound all;
    builder.MakeCompound(all);
    auto const add = [&](auto const & entities) {
        for (auto * const entity : entities) {
            TopoDS_Shape const shape = m_Shapes.shapeOf(*entity);
            if (!shape.IsNull())
                builder.Add(all, shape);
        }
    };
    add(loose.bodies);
    add(loose.shells);
    add(loose.faces);
    add(loose.edges);
    add(loose.curves);
    add(loose.points);
    if (!TopoDS_Iterator(all).More())
        return;
    auto const tool = toolOf(m_Content);
    TDF_Label const label = addProduct(tool->NewShape(), {{}, "", m_FallbackName, ""});
    tool->SetShape(label, all);
    for (auto * const body : loose.bodies) {
        TopoDS_Shape const shape = m_Shapes.madeFrom(*body);
        if (shape.IsNull())
            continue;
        m_Names.emplace_back(shape, body->getName());
        if (m_Facts.hasFacts(*body))
            m_Facts.put(*body, tool->AddSubShape(label, shape), m_Coverage);
    }
    m_Coverage.changed(HtmlLoggerEntry::Part, "shapes of no part as a product of their own");
}

TDF_Label ModelDocument::addProduct(TDF_Label const & label, OutgoingProduct product)
{
    product.label = label;
    if (product.id.empty())
        product.id = product.name;
    m_Products.push_back(std::move(product));
    return label;
}

OutgoingProduct ModelDocument::productOf(Component & component) const
{
    OutgoingProduct result;
    result.name = component.getSecondLabel();
    if (result.name.empty())
        result.name = component.getName();
    if (result.name.empty())
        result.name = m_FallbackName;
    result.id = component.getFirstLabel();
    if (result.id.empty())
        result.id = result.name;
    result.description =
        m_Facts.text(component, transl_tk::Attribute::Product, "product description");
    return result;
}

} // namespace step
