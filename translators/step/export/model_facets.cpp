#include "export/model_facets.h"

#include "export/listed.h"
#include "export/loose_entities.h"

#include <keld-transl/model/point3d.h>
#include <keld-transl/model/sub_pool.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/tri_strip.h>
#include <keld-translator-kit/translator.h>

#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Poly_Triangulation.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>
#include <algorithm>
#include <cmath>

namespace step {

namespace {

using transl_tk::Assembly;
using transl_tk::Body;
using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::HtmlLoggerEntry;
using transl_tk::Instance;
using transl_tk::Part;
using transl_tk::TriStrip;
using translator_kit::Failure;
using translator_kit::Reason;

constexpr std::size_t DeepestAssembly = 500;

gp_GTrsf transformOf(Hierarchy & node)
{
    double m[16];
    node.getTransform(m);
    return {gp_Mat(m[0], m[4], m[8], m[1], m[5], m[9], m[2], m[6], m[10]),
            gp_XYZ(m[12], m[13], m[14])};
}

std::string nameOf(Component & component)
{
    std::string const name = component.getSecondLabel();
    return name.empty() ? component.getName() : name;
}

gp_XYZ cornerAt(float const * vertices, long long index)
{
    float const * const corner = vertices + 3 * index;
    return {static_cast<double>(corner[0]), static_cast<double>(corner[1]),
            static_cast<double>(corner[2])};
}

bool isFinite(Triangle const & triangle)
{
    return std::all_of(triangle.begin(), triangle.end(),
                       [](float value) { return std::isfinite(value); });
}

} // namespace

ModelFacets::ModelFacets(transl_tk::SubPool & model, std::string fallbackName,
                         translator_kit::Run & run, Coverage & coverage)
    : m_Model(model), m_FallbackName(std::move(fallbackName)), m_Run(run), m_Coverage(coverage),
      m_Shapes(model, m_Exact), m_Settings(run.options())
{}

std::vector<Facets> ModelFacets::gather()
{
    std::vector<Hierarchy *> tops;
    Hierarchy::gatherTopLevelHierarchies(tops);
    for (Hierarchy * const top : tops) {
        bool const isPlaced = top->getHierarchyType() != Hierarchy::Instance &&
                              !static_cast<Component *>(top)->forEachInstance(
                                  [](Instance *, void *) { return false; }, nullptr);
        if (!isPlaced)
            add(*top, gp_GTrsf());
    }
    addLoose();
    for (std::string const & fault : m_Shapes.faults())
        m_Coverage.lost(HtmlLoggerEntry::Facet, "", fault);
    return std::move(m_Facets);
}

void ModelFacets::add(Hierarchy & node, gp_GTrsf const & above)
{
    gp_GTrsf const place = above.Multiplied(transformOf(node));
    auto * const component = node.getHierarchyType() == Hierarchy::Instance
                                 ? static_cast<Instance &>(node).getComponent()
                                 : static_cast<Component *>(&node);
    if (component == nullptr || m_Open.contains(component)) {
        m_Coverage.lost(HtmlLoggerEntry::Instance, std::to_string(node.getId()),
                        component == nullptr ? "it places nothing"
                                             : "it places an assembly within itself");
        return;
    }
    if (component->getHierarchyType() == Hierarchy::Part) {
        addPart(static_cast<Part &>(*component), place);
        return;
    }
    if (m_Open.size() >= DeepestAssembly)
        throw Failure(Reason::ExportFailed, "An assembly stands more than " +
                                                std::to_string(DeepestAssembly) +
                                                " levels deep, deeper than can be written.");
    m_Open.insert(component);
    for (auto * const child : listed(static_cast<Assembly &>(*component), &Assembly::forEachChild))
        add(*child, place);
    m_Open.erase(component);
}

void ModelFacets::addPart(Part & part, gp_GTrsf const & placing)
{
    auto known = m_Parts.find(&part);
    if (known == m_Parts.end()) {
        auto facets =
            facetsOf(listed(part, &Part::forEachBody), listed(part, &Part::forEachTriStrip), {});
        known = m_Parts.emplace(&part, std::move(facets)).first;
        lose(listed(part, &Part::forEachEdge), HtmlLoggerEntry::Edge);
        lose(listed(part, &Part::forEachCurve), HtmlLoggerEntry::Curve);
        lose(listed(part, &Part::forEachPoint), HtmlLoggerEntry::Point);
    }
    place(nameOf(part), known->second, placing);
}

void ModelFacets::addLoose()
{
    LooseEntities const loose(m_Model);
    std::vector<TopoDS_Shape> shapes;
    for (auto * const shell : loose.shells)
        shapes.push_back(m_Shapes.shapeOf(*shell));
    for (auto * const face : loose.faces)
        shapes.push_back(m_Shapes.shapeOf(*face));
    place(m_FallbackName, facetsOf(loose.bodies, loose.strips, shapes), gp_GTrsf());
    lose(loose.edges, HtmlLoggerEntry::Edge);
    lose(loose.curves, HtmlLoggerEntry::Curve);
    lose(loose.points, HtmlLoggerEntry::Point);
}

std::vector<ModelFacets::Corners> ModelFacets::facetsOf(std::vector<Body *> const & bodies,
                                                        std::vector<TriStrip *> strips,
                                                        std::vector<TopoDS_Shape> shapes)
{
    for (Body * const body : bodies) {
        auto const own = listed(*body, &Body::forEachTriStrip);
        if (own.empty())
            shapes.push_back(m_Shapes.shapeOf(*body));
        strips.insert(strips.end(), own.begin(), own.end());
    }
    std::vector<Corners> corners;
    for (TriStrip * const strip : strips)
        addStrip(*strip, corners);
    addMesh(shapes, corners);
    return corners;
}

void ModelFacets::addStrip(TriStrip & strip, std::vector<Corners> & corners)
{
    float * vertices = nullptr;
    float * normals = nullptr;
    unsigned char * colours = nullptr;
    int * indices = nullptr;
    int vertexCount = 0;
    int normalCount = 0;
    int indexCount = 0;
    strip.getData(vertices, colours, vertexCount, normals, normalCount, indices, indexCount);
    if (vertices == nullptr)
        return;
    bool const isList = indices != nullptr && indexCount > 0;
    auto const add = [&](long long a, long long b, long long c) {
        corners.push_back({cornerAt(vertices, a), cornerAt(vertices, b), cornerAt(vertices, c)});
    };
    for (long long i = 0; isList && i + 2 < indexCount; i += 3) {
        int const * const triangle = indices + i;
        if (std::all_of(triangle, triangle + 3,
                        [&](int index) { return index >= 0 && index < vertexCount; }))
            add(triangle[0], triangle[1], triangle[2]);
        else
            m_Coverage.lost(HtmlLoggerEntry::Facet, std::to_string(strip.getId()),
                            "an index is out of range");
    }
    for (long long i = 0; !isList && i + 2 < vertexCount; ++i) {
        // Where two corners are one point, two parts of the strip are joined.
        auto const at = [&](long long index) { return cornerAt(vertices, index); };
        if (at(i).IsEqual(at(i + 1), 0) || at(i + 1).IsEqual(at(i + 2), 0) ||
            at(i).IsEqual(at(i + 2), 0))
            continue;
        if (i % 2 == 0)
            add(i, i + 1, i + 2);
        else
            add(i + 1, i, i + 2);
    }
}

void ModelFacets::addMesh(std::vector<TopoDS_Shape> const & shapes, std::vector<Corners> & corners)
{
    BRep_Builder builder;
    TopoDS_Compound all;
    builder.MakeCompound(all);
    for (TopoDS_Shape const & shape : shapes) {
        if (!shape.IsNull())
            builder.Add(all, shape);
    }
    TopExp_Explorer found(all, TopAbs_FACE);
    if (!found.More())
        return;
    BRepMesh_IncrementalMesh const meshing(all, m_Settings.deflectionFor(all, m_Run), false,
                                           m_Settings.angle(), false);
    for (; found.More(); found.Next()) {
        TopoDS_Face const face = TopoDS::Face(found.Current());
        TopLoc_Location location;
        auto const mesh = BRep_Tool::Triangulation(face, location);
        if (mesh.IsNull()) {
            m_Coverage.lost(HtmlLoggerEntry::Facet, "", "a face could not be meshed");
            continue;
        }
        bool const turned = face.Orientation() == TopAbs_REVERSED;
        for (int i = 1; i <= mesh->NbTriangles(); ++i) {
            int a = 0;
            int b = 0;
            int c = 0;
            mesh->Triangle(i).Get(a, b, c);
            if (turned)
                std::swap(b, c);
            corners.push_back({mesh->Node(a).XYZ(), mesh->Node(b).XYZ(), mesh->Node(c).XYZ()});
        }
    }
}

void ModelFacets::place(std::string const & name, std::vector<Corners> const & corners,
                        gp_GTrsf const & place)
{
    if (corners.empty())
        return;
    Facets & facets = m_Facets.emplace_back(Facets{name, {}});
    facets.triangles.reserve(corners.size());
    bool const mirrors = place.VectorialPart().Determinant() < 0;
    for (Corners triangle : corners) {
        if (mirrors)
            std::swap(triangle[1], triangle[2]);
        Triangle placed;
        for (std::size_t i = 0; i < 3; ++i) {
            place.Transforms(triangle[i]);
            for (std::size_t k = 0; k < 3; ++k)
                placed[3 * i + k] =
                    static_cast<float>(triangle[i].Coord(static_cast<int>(k) + 1) + 0.0);
        }
        if (isFinite(placed)) {
            facets.triangles.push_back(placed);
            m_Coverage.exact(HtmlLoggerEntry::Facet);
        } else {
            m_Coverage.lost(HtmlLoggerEntry::Facet, "", "a corner is not finite");
        }
    }
}

template <class Entities> void ModelFacets::lose(Entities const & entities, Kind kind)
{
    for (auto * const entity : entities)
        m_Coverage.lost(kind, std::to_string(entity->getId()), "STL takes facets alone");
}

} // namespace step
