#include "import/topology.h"

#include "import/curves.h"
#include "import/edge_uv.h"
#include "import/loop_order.h"
#include "import/placement.h"

#include <keld-transl/geom/point.h>
#include <keld-transl/geom/trimming_points.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/uv_curve.h>
#include <keld-transl/topology/vertex.h>

#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom_Curve.hxx>
#include <Geom_Surface.hxx>
#include <Precision.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Vertex.hxx>
#include <TopoDS_Wire.hxx>
#include <cmath>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;

std::array<double, 12> matrixOf(gp_Trsf const & transform)
{
    std::array<double, 12> matrix;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column)
            matrix[static_cast<std::size_t>(4 * row + column)] =
                transform.Value(row + 1, column + 1);
    }
    return matrix;
}

bool isIdentity(gp_Trsf const & transform)
{
    return transform.Form() == gp_Identity;
}

bool scales(gp_Trsf const & transform)
{
    return std::abs(std::abs(transform.ScaleFactor()) - 1) > Precision::Angular();
}

/// The words of an exception of the kernel.
std::string wordsOf(Standard_Failure const & failure)
{
    std::string const type = failure.DynamicType()->Name();
    std::string const message = failure.GetMessageString();
    return message.empty() ? type : type + ": " + message;
}

/// The ends of a stretch, with the parameters as fourth components.
void setTrimming(geom::Curve & curve, Geom_Curve const & from, double first, double last)
{
    if (Precision::IsInfinite(first) || Precision::IsInfinite(last))
        return;
    auto const ends = [&](double parameter) {
        gp_Pnt const point = from.Value(parameter);
        return std::array<double, 4>{point.X(), point.Y(), point.Z(), parameter};
    };
    auto * const points = new geom::trimmingPoints(true);
    points->setStartPoint(ends(first).data(), true);
    points->setEndPoint(ends(last).data(), true);
    curve.setTrimPoints(points);
}

} // namespace

void Topology::addShape(TopoDS_Shape const & shape, transl_tk::Part & part)
{
    // Compounds may be nested as deep as a file likes.
    std::vector<TopoDS_Shape> open = {shape};
    while (!open.empty()) {
        TopoDS_Shape const next = open.back();
        open.pop_back();
        if (next.ShapeType() != TopAbs_COMPOUND && next.ShapeType() != TopAbs_COMPSOLID) {
            addLoose(next, part);
            continue;
        }
        std::vector<TopoDS_Shape> children;
        for (TopoDS_Iterator child(next); child.More(); child.Next())
            children.push_back(child.Value());
        open.insert(open.end(), children.rbegin(), children.rend());
    }
    addFreeFaces(part);
}

void Topology::addLoose(TopoDS_Shape const & shape, transl_tk::Part & part)
{
    switch (shape.ShapeType()) {
    case TopAbs_SOLID:
        return addSolid(shape, part);
    case TopAbs_SHELL:
        return addFreeShell(shape, part);
    case TopAbs_FACE:
        m_FreeFaces.push_back(shape);
        return;
    case TopAbs_WIRE:
        for (TopoDS_Iterator edge(shape); edge.More(); edge.Next())
            addFreeEdge(TopoDS::Edge(edge.Value()), part);
        return;
    case TopAbs_EDGE:
        return addFreeEdge(TopoDS::Edge(shape), part);
    case TopAbs_VERTEX:
        return addPoint(TopoDS::Vertex(shape), part);
    default:
        return;
    }
}

void Topology::addSolid(TopoDS_Shape const & solid, transl_tk::Part & part)
{
    transl_tk::Body * const body = newBody(solid, part);
    for (TopoDS_Iterator child(solid); child.More(); child.Next()) {
        if (child.Value().ShapeType() == TopAbs_SHELL)
            body->addShell(shellFrom(child.Value(), true));
        else
            addLoose(child.Value(), part); // an edge or a vertex inside a solid
    }
}

void Topology::addFreeShell(TopoDS_Shape const & shell, transl_tk::Part & part)
{
    newBody(shell, part)->addShell(shellFrom(shell, false));
}

void Topology::addFreeFaces(transl_tk::Part & part)
{
    if (m_FreeFaces.empty())
        return;
    auto * const body = transl_tk::Body::create(0, part.getName());
    TopoDS_Compound all;
    BRep_Builder().MakeCompound(all);
    for (TopoDS_Shape const & face : m_FreeFaces) {
        BRep_Builder().Add(all, face);
        auto * const shell = transl_tk::Shell::create(0);
        if (auto * const made = faceFrom(TopoDS::Face(face)))
            shell->addFace(made);
        body->addShell(shell);
    }
    part.addBody(body);
    m_ArrivedBodies.push_back({all, body});
    m_FreeFaces.clear();
}

void Topology::addFreeEdge(TopoDS_Edge const & edge, transl_tk::Part & part)
{
    part.addEdge(edgeFrom(edge));
}

void Topology::addPoint(TopoDS_Vertex const & vertex, transl_tk::Part & part)
{
    gp_Pnt const point = BRep_Tool::Pnt(vertex);
    part.addPoint(transl_tk::Point3D::create(0, point.X(), point.Y(), point.Z()));
    m_Coverage.exact(HtmlLoggerEntry::Point);
}

transl_tk::Body * Topology::newBody(TopoDS_Shape const & shape, transl_tk::Part & part)
{
    std::string const name = m_Source.nameOf(shape);
    auto * const body = transl_tk::Body::create(0, name.empty() ? part.getName() : name.c_str());
    part.addBody(body);
    m_ArrivedBodies.push_back({shape, body});
    m_Coverage.exact(HtmlLoggerEntry::Body);
    return body;
}

transl_tk::Shell * Topology::shellFrom(TopoDS_Shape const & shell, bool boundsSolid)
{
    auto * const result = transl_tk::Shell::create(0);
    result->setShellFlag(boundsSolid);
    for (TopoDS_Iterator face(shell); face.More(); face.Next()) {
        if (face.Value().ShapeType() != TopAbs_FACE)
            continue;
        if (auto * const made = faceFrom(TopoDS::Face(face.Value())))
            result->addFace(made);
    }
    m_Coverage.exact(HtmlLoggerEntry::Shell);
    return result;
}

transl_tk::Face * Topology::faceFrom(TopoDS_Face const & face)
{
    m_Source.onFace(face);
    CarriedSurface surface;
    try {
        surface = surfaceOf(face);
    } catch (Standard_Failure const & failure) {
        m_Coverage.lost(HtmlLoggerEntry::Surface, m_Source.entityOf(face), wordsOf(failure));
    }
    auto * const result = transl_tk::Face::create(0, surface.carrier);
    bool const forward = face.Orientation() != TopAbs_REVERSED;
    result->setSense(forward != surface.turned);
    result->setLabel(m_Source.nameOf(face).c_str());
    for (TopoDS_Iterator child(face); child.More(); child.Next()) {
        if (child.Value().ShapeType() == TopAbs_WIRE)
            result->addLoop(loopFrom(TopoDS::Wire(child.Value()), face, surface.uv));
        else
            m_Coverage.lost(HtmlLoggerEntry::Vertex, m_Source.entityOf(child.Value()),
                            "it stands in a face without belonging to a boundary");
    }
    m_ArrivedFaces.push_back({face, result});
    if (face.Orientation() == TopAbs_INTERNAL || face.Orientation() == TopAbs_EXTERNAL)
        m_Coverage.changed(HtmlLoggerEntry::Face, "inner face as face with a sense");
    else if (m_Source.openFaces.contains(face.TShape().get()))
        m_Coverage.changed(HtmlLoggerEntry::Face, "face without one of its boundaries");
    else
        m_Coverage.exact(HtmlLoggerEntry::Face);
    return result;
}

transl_tk::Loop * Topology::loopFrom(TopoDS_Wire const & wire, TopoDS_Face const & face,
                                     UvMap const & uv)
{
    auto * const loop = transl_tk::Loop::create(0);
    for (TopoDS_Shape const & edge : edgesInOrder(wire, face))
        loop->addFin(finFrom(TopoDS::Edge(edge), face, uv));
    m_Coverage.exact(HtmlLoggerEntry::Loop);
    return loop;
}

transl_tk::Fin * Topology::finFrom(TopoDS_Edge const & edge, TopoDS_Face const & face,
                                   UvMap const & uv)
{
    auto * const fin =
        transl_tk::Fin::create(0, edgeFrom(edge), edge.Orientation() != TopAbs_REVERSED);
    if (edge.Orientation() == TopAbs_INTERNAL || edge.Orientation() == TopAbs_EXTERNAL)
        m_Coverage.changed(HtmlLoggerEntry::Fin, "inner edge of a face as fin with a sense");
    else
        m_Coverage.exact(HtmlLoggerEntry::Fin);
    try {
        setUvCurve(*fin, edge, face, uv);
    } catch (Standard_Failure const & failure) {
        m_Coverage.lost(HtmlLoggerEntry::UVCurve, m_Source.entityOf(edge), wordsOf(failure));
    }
    return fin;
}

void Topology::setUvCurve(transl_tk::Fin & fin, TopoDS_Edge const & edge, TopoDS_Face const & face,
                          UvMap const & uv)
{
    double first = 0;
    double last = 0;
    auto const curve = uvCurveOf(edge, face, first, last);
    if (curve.IsNull())
        return;
    if (!uv.exists) {
        m_Coverage.lost(HtmlLoggerEntry::UVCurve, m_Source.entityOf(edge),
                        "the surface has got other parameters");
        return;
    }
    UvCurveResult const made = makeUvCurve(curve, first, last, uv);
    if (made.curve == nullptr) {
        m_Coverage.lost(HtmlLoggerEntry::UVCurve, m_Source.entityOf(edge),
                        "its range is empty or infinite, or it has no form as a spline");
        return;
    }
    fin.setUVCurve(transl_tk::UVCurve::create(0, made.curve));
    if (made.changed.empty())
        m_Coverage.exact(HtmlLoggerEntry::UVCurve);
    else
        m_Coverage.changed(HtmlLoggerEntry::UVCurve, made.changed);
}

transl_tk::Edge * Topology::edgeFrom(TopoDS_Edge const & edge)
{
    if (auto * const * known = m_Edges.Seek(edge))
        return *known;

    transl_tk::Curve3D * curve = nullptr;
    try {
        curve = curveOf(edge);
    } catch (Standard_Failure const & failure) {
        m_Coverage.lost(HtmlLoggerEntry::Curve, m_Source.entityOf(edge), wordsOf(failure));
    }
    auto const forward = TopoDS::Edge(edge.Oriented(TopAbs_FORWARD));
    TopoDS_Vertex const start = TopExp::FirstVertex(forward);
    TopoDS_Vertex const end = TopExp::LastVertex(forward);
    auto * const result =
        transl_tk::Edge::create(0, curve, start.IsNull() ? nullptr : vertexFrom(start),
                                end.IsNull() ? nullptr : vertexFrom(end), true);
    m_Edges.Bind(edge, result);
    m_ArrivedEdges.push_back({edge, result});
    m_Coverage.exact(HtmlLoggerEntry::Edge);
    return result;
}

transl_tk::Vertex * Topology::vertexFrom(TopoDS_Vertex const & vertex)
{
    if (auto * const * known = m_Vertices.Seek(vertex))
        return *known;
    gp_Pnt const point = BRep_Tool::Pnt(vertex);
    auto * const result =
        transl_tk::Vertex::create(0, geom::Point::create(point.X(), point.Y(), point.Z()));
    m_Vertices.Bind(vertex, result);
    m_ArrivedVertices.push_back({vertex, result});
    m_Coverage.exact(HtmlLoggerEntry::Vertex);
    return result;
}

transl_tk::Curve3D * Topology::curveOf(TopoDS_Edge const & edge)
{
    TopLoc_Location location;
    double first = 0;
    double last = 0;
    Handle(Geom_Curve) curve = BRep_Tool::Curve(edge, location, first, last);
    if (curve.IsNull()) {
        if (!BRep_Tool::Degenerated(edge))
            m_Coverage.lost(HtmlLoggerEntry::Curve, m_Source.entityOf(edge),
                            "the edge has no curve in space");
        return nullptr;
    }
    gp_Trsf const transform = location.Transformation();
    CurveKey key = {curve.get(), {}};
    auto const matrix = matrixOf(transform);
    std::copy(matrix.begin(), matrix.end(), key.second.begin());
    key.second[12] = first;
    key.second[13] = last;
    transl_tk::Curve3D *& carrier = m_Curves[key];
    if (carrier != nullptr)
        return carrier;

    if (!isIdentity(transform)) {
        first = curve->TransformedParameter(first, transform);
        last = curve->TransformedParameter(last, transform);
        curve = Handle(Geom_Curve)::DownCast(curve->Transformed(transform));
    }
    CurveResult const made = makeCurve(curve, first, last);
    if (made.curve == nullptr) {
        m_Coverage.lost(HtmlLoggerEntry::Curve, m_Source.entityOf(edge),
                        std::string("no form for a ") + curve->DynamicType()->Name());
        return nullptr;
    }
    setTrimming(*made.curve, *curve, first, last);
    if (made.changed.empty())
        m_Coverage.exact(HtmlLoggerEntry::Curve);
    else
        m_Coverage.changed(HtmlLoggerEntry::Curve, made.changed);
    carrier = transl_tk::Curve3D::create(0, made.curve);
    return carrier;
}

Topology::CarriedSurface Topology::surfaceOf(TopoDS_Face const & face)
{
    TopLoc_Location location;
    Handle(Geom_Surface) surface = BRep_Tool::Surface(face, location);
    if (surface.IsNull()) {
        m_Coverage.lost(HtmlLoggerEntry::Surface, m_Source.entityOf(face),
                        "the face has no surface");
        return {};
    }
    gp_Trsf const transform = location.Transformation();
    SurfaceKey const key = {surface.get(), matrixOf(transform)};
    bool const endless = isEndless(surface);
    auto const known = m_Surfaces.find(key);
    if (!endless && known != m_Surfaces.end())
        return known->second;

    if (!isIdentity(transform))
        surface = Handle(Geom_Surface)::DownCast(surface->Transformed(transform));
    // Each face on an endless surface has a stretch of its own.
    SurfaceRange range;
    if (endless)
        BRepTools::UVBounds(face, range.u1, range.u2, range.v1, range.v2);
    SurfaceResult const made = makeSurface(surface, range);
    if (made.surface == nullptr) {
        m_Coverage.lost(HtmlLoggerEntry::Surface, m_Source.entityOf(face),
                        std::string("no form for a ") + surface->DynamicType()->Name());
        return {};
    }
    if (made.changed.empty())
        m_Coverage.exact(HtmlLoggerEntry::Surface);
    else
        m_Coverage.changed(HtmlLoggerEntry::Surface, made.changed);
    CarriedSurface result = {transl_tk::Surface::create(0, made.surface), made.uv, made.turned};
    // The kernel's parameters of a surface do not grow with its size.
    result.uv.exists = result.uv.exists && !scales(transform);
    m_Surfaces.emplace(key, result);
    return result;
}

} // namespace step
