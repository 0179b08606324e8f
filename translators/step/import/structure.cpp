#include "import/structure.h"

#include "import/label_facts.h"
#include "import/pmi.h"
#include "import/topology.h"

#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-translator-kit/run.h>

#include <BRep_Tool.hxx>
#include <Precision.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <TopoDS_Vertex.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <gp_Trsf.hxx>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;

/// The columns of the matrix one behind the other: the three axes, each behind it a 0, and then
/// where the origin goes, and a 1.
void setTransform(transl_tk::Hierarchy & node, gp_Trsf const & transform)
{
    double values[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
    for (int column = 0; column < 4; ++column) {
        for (int row = 0; row < 3; ++row)
            values[4 * column + row] = transform.Value(row + 1, column + 1);
    }
    node.setTransform(values);
}

} // namespace

void Structure::build(translator_kit::Run & run)
{
    run.phase("mapping");
    TDF_LabelSequence roots;
    XCAFDoc_DocumentTool::ShapeTool(m_Document.content->Main())->GetFreeShapes(roots);
    std::vector<transl_tk::Base *> tops;
    for (TDF_Label const & root : roots)
        tops.push_back(componentFor(root));
    while (!m_OpenAssemblies.empty()) {
        auto const [definition, assembly] = m_OpenAssemblies.back();
        m_OpenAssemblies.pop_back();
        addChildren(definition, *assembly);
    }
    addOccurrenceColours(m_Instances, m_Attributes, m_Coverage);
    std::size_t done = 0;
    auto const percent = [&](std::size_t parts) {
        constexpr std::size_t Share = 30;
        return TransferEnd + static_cast<int>(Share * parts / m_OpenParts.size());
    };
    for (auto const & [definition, part] : m_OpenParts) {
        fillPart(definition, *part, run, percent(done), percent(done + 1));
        ++done;
        run.progress(percent(done));
    }
    run.phase("dimensions and tolerances");
    addPmi(*m_Document.content, m_Entities, m_Attributes, m_Coverage);
    addProducts();
    addHeader(tops);
}

transl_tk::Component * Structure::componentFor(TDF_Label const & definition)
{
    if (auto * const * known = m_Components.Seek(definition))
        return *known;
    std::string const ownName = nameOf(definition);
    std::string const & name = ownName.empty() ? m_FallbackName : ownName;
    transl_tk::Component * component = nullptr;
    if (XCAFDoc_ShapeTool::IsAssembly(definition)) {
        auto * const assembly = transl_tk::Assembly::create(0, name.c_str());
        m_OpenAssemblies.emplace_back(definition, assembly);
        component = assembly;
        m_Coverage.exact(HtmlLoggerEntry::Assembly);
    } else {
        auto * const part = transl_tk::Part::create(0, name.c_str());
        m_OpenParts.emplace_back(definition, part);
        component = part;
        m_Coverage.exact(HtmlLoggerEntry::Part);
    }
    component->setSecondLabel(ownName.c_str());
    component->setUnits(transl_tk::Units::create(
        m_Document.lengthUnit, component->getUnits()->getAngularType(), 1.0, 1.0));
    addFacts(definition, component, m_Attributes, m_Coverage);
    m_Components.Bind(definition, component);
    return component;
}

void Structure::addChildren(TDF_Label const & definition, transl_tk::Assembly & assembly)
{
    TDF_LabelSequence places;
    XCAFDoc_ShapeTool::GetComponents(definition, places);
    for (TDF_Label const & place : places) {
        TDF_Label referred;
        if (!XCAFDoc_ShapeTool::GetReferredShape(place, referred))
            continue;
        auto * const instance = transl_tk::Instance::create(0, componentFor(referred));
        setTransform(*instance, XCAFDoc_ShapeTool::GetLocation(place).Transformation());
        assembly.addChild(instance);
        m_Coverage.exact(HtmlLoggerEntry::Instance);
        std::string const name = nameOf(place);
        if (!name.empty())
            m_Attributes.add(instance, InstanceNameAttribute, "instance name", name);
        addFacts(place, instance, m_Attributes, m_Coverage);
        m_Instances.Bind(place, instance);
    }
}

void Structure::fillPart(TDF_Label const & definition, transl_tk::Part & part,
                         translator_kit::Run & run, int start, int end)
{
    auto const shapes = XCAFDoc_DocumentTool::ShapeTool(m_Document.content->Main());
    auto const nameOfShape = [&](TopoDS_Shape const & shape) {
        TDF_Label label;
        return shapes->FindSubShape(definition, shape, label) ? nameOf(label) : std::string();
    };
    std::string const words = "part \"" + std::string(part.getName()) + "\"";
    auto const tellFace = [&, number = 0](TopoDS_Shape const & face) mutable {
        ++number;
        std::string const entity = m_Document.faceEntityOf ? m_Document.faceEntityOf(face) : "";
        run.at((entity.empty() ? "face " + std::to_string(number) : entity) + " in " + words);
    };
    run.phase("mapping");
    run.at(words);
    Topology topology({nameOfShape, m_Document.entityOf, tellFace, m_Document.openFaces},
                      m_Coverage);
    TopoDS_Shape const shape = XCAFDoc_ShapeTool::GetShape(definition);
    topology.addShape(shape, part);
    run.at(words);
    m_Entities.Bind(definition, {{&part}, &part});
    addSubShapeFacts(definition, part, topology);
    addTolerances(topology);
    run.phase("tessellation");
    run.at(words);
    if (m_Facets.wanted())
        addFacets(shape, part, topology, m_Facets, m_Attributes, run, m_Coverage,
                  new TransferProgress(run, start, end));
}

void Structure::addSubShapeFacts(TDF_Label const & definition, transl_tk::Part & part,
                                 Topology const & topology)
{
    TDF_LabelSequence labels;
    XCAFDoc_ShapeTool::GetSubShapes(definition, labels);
    if (labels.IsEmpty())
        return;
    NCollection_DataMap<TopoDS_Shape, std::vector<transl_tk::Base *>, TopTools_ShapeMapHasher>
        entities;
    for (auto const * list :
         {&topology.bodies(), &topology.faces(), &topology.edges(), &topology.vertices()}) {
        for (Arrived const & arrived : *list) {
            if (!entities.IsBound(arrived.shape))
                entities.Bind(arrived.shape, {});
            entities.ChangeFind(arrived.shape).push_back(arrived.entity);
        }
    }
    for (TDF_Label const & label : labels) {
        TopoDS_Shape const shape = XCAFDoc_ShapeTool::GetShape(label);
        auto const * const found = entities.Seek(shape);
        if (found == nullptr)
            continue;
        m_Entities.Bind(label, {*found, &part});
        for (transl_tk::Base * const entity : *found)
            addFacts(label, entity, m_Attributes, m_Coverage);
    }
}

void Structure::addTolerances(Topology const & topology)
{
    auto const add = [&](Arrived const & arrived, double tolerance) {
        if (tolerance > Precision::Confusion())
            m_Attributes.add(arrived.entity, ToleranceAttribute, "tolerance",
                             std::vector<double>{tolerance});
    };
    for (Arrived const & vertex : topology.vertices())
        add(vertex, BRep_Tool::Tolerance(TopoDS::Vertex(vertex.shape)));
    for (Arrived const & edge : topology.edges())
        add(edge, BRep_Tool::Tolerance(TopoDS::Edge(edge.shape)));
    for (Arrived const & face : topology.faces())
        add(face, BRep_Tool::Tolerance(TopoDS::Face(face.shape)));
}

void Structure::addProducts()
{
    for (Product const & product : m_Document.products) {
        auto * const * const component = m_Components.Seek(product.label);
        if (component == nullptr)
            continue;
        (*component)->setFirstLabel(product.id.c_str());
        m_Attributes.addProduct(*component, "product id", product.id);
        if (!product.description.empty())
            m_Attributes.addProduct(*component, "product description", product.description);
    }
}

void Structure::addHeader(std::vector<transl_tk::Base *> const & tops)
{
    for (transl_tk::Base * const top : tops) {
        for (auto const & [name, text] : m_Document.header)
            m_Attributes.add(top, HeaderAttribute, name.c_str(), text);
        if (!m_Document.unitName.empty())
            m_Attributes.add(top, UnitAttribute, "length unit", m_Document.unitName);
    }
}

} // namespace step
