// The half of ShapeBuilder that makes edges, vertices and points.
#include "export/curve_ends.h"
#include "export/shape_builder.h"

#include <keld-transl/geom/curve.h>
#include <keld-transl/geom/point.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/vertex.h>

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom_Curve.hxx>
#include <Precision.hxx>
#include <Standard_Failure.hxx>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;

gp_Pnt positionOf(geom::Point & point)
{
    double x = 0;
    double y = 0;
    double z = 0;
    point.getCoordinates(x, y, z);
    return {x, y, z};
}

std::string wordsOf(Standard_Failure const & failure)
{
    std::string const words = failure.GetMessageString();
    return words.empty() ? failure.DynamicType()->Name() : words;
}

} // namespace

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

} // namespace step
