#include "shape_builder.h"

#include "attribute_book.h"
#include "curve_ends.h"
#include "edge_traces.h"
#include "listed.h"

#include <keld-transl/geom/curve.h>
#include <keld-transl/geom/point.h>
#include <keld-transl/geom/surface.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/model/sub_pool.h>
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

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_Curve.hxx>
#include <Geom_Curve.hxx>
#include <Geom_Surface.hxx>
#include <Precision.hxx>
#include <Standard_Failure.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Solid.hxx>
#include <TopoDS_Wire.hxx>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;

constexpr int DoubleValue = 5;

gp_Pnt positionOf(geom::Point & point)
{
    double x = 0;
    double y = 0;
    double z = 0;
    point.getCoordinates(x, y, z);
    return {x, y, z};
}

bool isSolid(TopoDS_Shape const & shape)
{
    return shape.ShapeType() == TopAbs_SOLID;
}

std::string wordsOf(Standard_Failure const & failure)
{
    std::string const words = failure.GetMessageString();
    return words.empty() ? failure.DynamicType()->Name() : words;
}

} // namespace

ShapeBuilder::ShapeBuilder(transl_tk::SubPool & model, Coverage & coverage) : m_Coverage(coverage)
{
    for (transl_tk::Attribute * const attribute : model.m_Attributes) {
        if (attribute->getType() != static_cast<int>(ToleranceAttribute) ||
            attribute->getNumValues() < 1 || attribute->getValue(0) == nullptr ||
            attribute->getValue(0)->getType() != DoubleValue)
            continue;
        std::pair<ShapeBuilder *, double> context(this, 0.0);
        attribute->getValue(0)->getValue(context.second);
        attribute->forEachEntity(
            [](transl_tk::Base * entity, void * user) {
                auto & [builder, tolerance] =
                    *static_cast<std::pair<ShapeBuilder *, double> *>(user);
                builder->m_Tolerances[entity] = tolerance;
                return true;
            },
            &context);
    }
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Part & part)
{
    BRep_Builder builder;
    TopoDS_Compound result;
    builder.MakeCompound(result);
    auto const add = [&](auto const & entities) {
        for (auto * const entity : entities) {
            TopoDS_Shape const shape = shapeOf(*entity);
            if (!shape.IsNull())
                builder.Add(result, shape);
        }
    };
    add(listed(part, &transl_tk::Part::forEachBody));
    add(listed(part, &transl_tk::Part::forEachEdge));
    add(listed(part, &transl_tk::Part::forEachCurve));
    add(listed(part, &transl_tk::Part::forEachPoint));
    return result.NbChildren() == 1 && isSolid(TopoDS_Iterator(result).Value())
               ? TopoDS_Iterator(result).Value()
               : result;
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Body & body)
{
    BRep_Builder builder;
    std::vector<transl_tk::Shell *> const shells = listed(body, &transl_tk::Body::forEachShell);
    if (shells.empty())
        return {};
    TopoDS_Shape & result = m_Made[&body];
    bool boundsSolid = true;
    for (auto * const shell : shells)
        boundsSolid = boundsSolid && shell->getShellFlag();
    if (!boundsSolid && shells.size() == 1) {
        result = shapeOf(*shells.front());
    } else {
        TopoDS_Solid solid;
        TopoDS_Compound compound;
        builder.MakeSolid(solid);
        builder.MakeCompound(compound);
        result = boundsSolid ? TopoDS_Shape(solid) : TopoDS_Shape(compound);
        for (auto * const shell : shells)
            builder.Add(result, shapeOf(*shell));
    }
    m_Coverage.exact(HtmlLoggerEntry::Body);
    return result;
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Shell & shell)
{
    BRep_Builder builder;
    TopoDS_Shell result;
    builder.MakeShell(result);
    for (auto * const face : listed(shell, &transl_tk::Shell::forEachFace)) {
        TopoDS_Shape const made = shapeOf(*face);
        if (!made.IsNull())
            builder.Add(result, made);
    }
    result.Closed(BRep_Tool::IsClosed(result));
    m_Coverage.exact(HtmlLoggerEntry::Shell);
    return result;
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Face & face)
{
    try {
        TopoDS_Face const result = faceOf(face);
        m_Made[&face] = result;
        m_Coverage.exact(HtmlLoggerEntry::Face);
        return result;
    } catch (Standard_Failure const & failure) {
        fault(HtmlLoggerEntry::Face, face, wordsOf(failure));
        return {};
    }
}

TopoDS_Face ShapeBuilder::faceOf(transl_tk::Face & face)
{
    BRep_Builder builder;
    TopoDS_Face result;
    if (face.getSurface() == nullptr || face.getSurface()->getSurface() == nullptr)
        throw Standard_Failure("it has no surface");
    builder.MakeFace(result, surfaceOf(*face.getSurface()), toleranceOf(face));
    EdgeTraces traces;
    auto const loops = listed(face, &transl_tk::Face::forEachLoop);
    for (auto * const loop : loops)
        addLoop(result, *loop, face.getSense(), traces);
    if (loops.empty())
        builder.NaturalRestriction(result, true);
    traces.setOn(result);
    if (!face.getSense())
        result.Reverse();
    return result;
}

void ShapeBuilder::addLoop(TopoDS_Face & face, transl_tk::Loop & loop, bool faceSense,
                           EdgeTraces & traces)
{
    BRep_Builder builder;
    TopoDS_Wire wire;
    builder.MakeWire(wire);
    for (auto * const fin : listed(loop, &transl_tk::Loop::forEachFin)) {
        if (fin->getEdge() == nullptr)
            throw Standard_Failure("a fin has no edge");
        TopoDS_Edge const edge = edgeOf(*fin->getEdge());
        bool const along = (fin->getSense() == faceSense) == fin->getEdge()->getSense();
        builder.Add(wire, edge.Oriented(along ? TopAbs_FORWARD : TopAbs_REVERSED));
        auto * const uv = fin->getUVCurve();
        traces.add(edge, along,
                   uv != nullptr && uv->getCurve() != nullptr ? kernelUvCurve(*uv->getCurve())
                                                              : UvStretch());
        if (uv != nullptr)
            m_Coverage.exact(HtmlLoggerEntry::UVCurve);
        m_Coverage.exact(HtmlLoggerEntry::Fin);
    }
    wire.Closed(BRep_Tool::IsClosed(wire));
    builder.Add(face, wire);
    m_Coverage.exact(HtmlLoggerEntry::Loop);
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Edge & edge)
{
    try {
        TopoDS_Edge const result = edgeOf(edge);
        if (!BRep_Tool::Degenerated(result))
            return result;
        fault(HtmlLoggerEntry::Edge, edge, "it has no curve and belongs to no face");
    } catch (Standard_Failure const & failure) {
        fault(HtmlLoggerEntry::Edge, edge, wordsOf(failure));
    }
    return {};
}

TopoDS_Edge ShapeBuilder::edgeOf(transl_tk::Edge & edge)
{
    if (auto const known = m_Edges.find(&edge); known != m_Edges.end())
        return known->second;
    BRep_Builder builder;
    TopoDS_Edge result;
    auto * const start = edge.getSense() ? edge.getStartVertex() : edge.getEndVertex();
    auto * const end = edge.getSense() ? edge.getEndVertex() : edge.getStartVertex();
    auto * const carrier = edge.getCurve();
    Handle(Geom_Curve) curve;
    if (carrier != nullptr && carrier->getCurve() != nullptr) {
        curve = curveOf(*carrier);
        builder.MakeEdge(result, curve, toleranceOf(edge));
    } else {
        builder.MakeEdge(result);
        builder.UpdateEdge(result, toleranceOf(edge));
        builder.Degenerated(result, start == end);
    }
    TopoDS_Vertex const first = start == nullptr ? TopoDS_Vertex() : vertexOf(*start, curve);
    TopoDS_Vertex const last = end == nullptr ? TopoDS_Vertex() : vertexOf(*end, curve);
    if (!curve.IsNull()) {
        CurveRange const range = endsOf(*carrier->getCurve(), curve, first, last);
        builder.Range(result, range.first, range.last);
    }
    if (!first.IsNull())
        builder.Add(result, first.Oriented(TopAbs_FORWARD));
    if (!last.IsNull())
        builder.Add(result, last.Oriented(TopAbs_REVERSED));
    m_Edges[&edge] = result;
    m_Made[&edge] = result;
    m_Coverage.exact(HtmlLoggerEntry::Edge);
    return result;
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Curve3D & carrier)
{
    try {
        Handle(Geom_Curve) const curve = curveOf(carrier);
        CurveRange const range = endsOf(*carrier.getCurve(), curve, {}, {});
        TopoDS_Edge result;
        BRep_Builder builder;
        builder.MakeEdge(result, curve, Precision::Confusion());
        builder.Range(result, range.first, range.last);
        TopoDS_Vertex first;
        TopoDS_Vertex last;
        gp_Pnt const start = curve->Value(range.first);
        gp_Pnt const end = curve->Value(range.last);
        builder.MakeVertex(first, start, Precision::Confusion());
        if (start.Distance(end) < Precision::Confusion())
            last = first;
        else
            builder.MakeVertex(last, end, Precision::Confusion());
        builder.Add(result, first.Oriented(TopAbs_FORWARD));
        builder.Add(result, last.Oriented(TopAbs_REVERSED));
        return result;
    } catch (Standard_Failure const & failure) {
        fault(HtmlLoggerEntry::Curve, carrier, wordsOf(failure));
        return {};
    }
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Point3D & point)
{
    double x = 0;
    double y = 0;
    double z = 0;
    point.getCoordinates(x, y, z);
    TopoDS_Vertex vertex;
    BRep_Builder().MakeVertex(vertex, {x, y, z}, Precision::Confusion());
    m_Coverage.exact(HtmlLoggerEntry::Point);
    return vertex;
}

TopoDS_Shape ShapeBuilder::madeFrom(transl_tk::Base const & entity) const
{
    auto const found = m_Made.find(&entity);
    return found == m_Made.end() ? TopoDS_Shape() : found->second;
}

TopoDS_Vertex ShapeBuilder::vertexOf(transl_tk::Vertex & vertex, Handle(Geom_Curve) const & curve)
{
    TopoDS_Vertex & result = m_Vertices[&vertex];
    if (!result.IsNull())
        return result;
    geom::Point * point = nullptr;
    double parameter = 0;
    vertex.getGeometry(point, parameter);
    if (point == nullptr && curve.IsNull())
        throw Standard_Failure("a vertex is given by a parameter of a curve that is missing");
    gp_Pnt const position = point != nullptr ? positionOf(*point) : curve->Value(parameter);
    BRep_Builder().MakeVertex(result, position, toleranceOf(vertex));
    m_Coverage.exact(HtmlLoggerEntry::Vertex);
    return result;
}

Handle(Geom_Curve) ShapeBuilder::curveOf(transl_tk::Curve3D & carrier)
{
    Handle(Geom_Curve) & result = m_Curves[&carrier];
    if (!result.IsNull())
        return result;
    result = kernelCurve(*carrier.getCurve());
    if (carrier.getCurve()->getType() == geom::Curve::LineStrip)
        m_Coverage.changed(HtmlLoggerEntry::Curve, "line strip as B-spline curve");
    else
        m_Coverage.exact(HtmlLoggerEntry::Curve);
    return result;
}

Handle(Geom_Surface) ShapeBuilder::surfaceOf(transl_tk::Surface & surface)
{
    Handle(Geom_Surface) & result = m_Surfaces[&surface];
    if (!result.IsNull())
        return result;
    result = kernelSurface(*surface.getSurface());
    if (surface.getSurface()->getType() == geom::Surface::Ruled)
        m_Coverage.changed(HtmlLoggerEntry::Surface, "ruled surface as B-spline surface");
    else
        m_Coverage.exact(HtmlLoggerEntry::Surface);
    return result;
}

double ShapeBuilder::toleranceOf(transl_tk::Base const & entity) const
{
    auto const found = m_Tolerances.find(&entity);
    return found == m_Tolerances.end() ? Precision::Confusion() : found->second;
}

void ShapeBuilder::fault(Kind kind, transl_tk::Base const & entity, std::string const & words)
{
    std::string const number = std::to_string(entity.getId());
    m_Faults.push_back("The " + HtmlLoggerEntry::baseToStringMapping(kind) + " " + number +
                       " was left out: " + words + ".");
    m_Coverage.lost(kind, number, words);
}

} // namespace step
