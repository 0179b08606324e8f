#include "shape_builder.h"

#include "attribute_book.h"
#include "kernel_geometry.h"

#include <keld-transl/geom/curve.h>
#include <keld-transl/geom/point.h>
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

#include <BRepLib.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_Curve.hxx>
#include <Geom_Curve.hxx>
#include <Geom_Plane.hxx>
#include <Geom_Surface.hxx>
#include <Precision.hxx>
#include <ShapeFix_Edge.hxx>
#include <Standard_Failure.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Solid.hxx>
#include <TopoDS_Wire.hxx>
#include <cmath>

namespace step {

namespace {

/// What `forEach...` of the toolkit visits, in a list. Nulls are left out.
template <class Entity, class Owner>
std::vector<Entity *> listed(Owner & owner,
                             bool (Owner::*forEach)(bool (*)(Entity *, void *), void *))
{
    std::vector<Entity *> result;
    (owner.*forEach)(
        [](Entity * entity, void * list) {
            if (entity != nullptr)
                static_cast<std::vector<Entity *> *>(list)->push_back(entity);
            return true;
        },
        &result);
    return result;
}

constexpr int DoubleValue = 5;

/// Whether a trace runs through the same points as its edge at the same parameters.
bool isSynchronous(TopoDS_Edge const & edge, UvStretch const & trace, Geom_Surface const & surface)
{
    double first = 0;
    double last = 0;
    Handle(Geom_Curve) const curve = BRep_Tool::Curve(edge, first, last);
    double const slack = Precision::PConfusion();
    if (std::abs(first - trace.first) > slack || std::abs(last - trace.last) > slack)
        return false;
    constexpr int Samples = 8;
    double const tolerance = std::max(BRep_Tool::Tolerance(edge), 10 * Precision::Confusion());
    for (int i = 0; i <= Samples; ++i) {
        double const parameter = first + (last - first) * i / Samples;
        gp_Pnt2d const uv = trace.curve->Value(parameter);
        if (surface.Value(uv.X(), uv.Y()).Distance(curve->Value(parameter)) > tolerance)
            return false;
    }
    return true;
}

} // namespace

/// The UV curves of one edge in one face: that of the fin along the edge, and that of the other.
struct ShapeBuilder::Trace
{
    TopoDS_Edge edge;
    UvStretch along = {};
    UvStretch against = {};
    bool hasAlong = false;
    bool hasAgainst = false;
};

ShapeBuilder::ShapeBuilder(transl_tk::SubPool & model)
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
    for (auto * const body : listed(part, &transl_tk::Part::forEachBody))
        builder.Add(result, shapeOf(*body));
    for (auto * const edge : listed(part, &transl_tk::Part::forEachEdge))
        builder.Add(result, edgeOf(*edge));
    for (auto * const point : listed(part, &transl_tk::Part::forEachPoint)) {
        double x = 0;
        double y = 0;
        double z = 0;
        point->getCoordinates(x, y, z);
        TopoDS_Vertex vertex;
        builder.MakeVertex(vertex, {x, y, z}, Precision::Confusion());
        builder.Add(result, vertex);
    }
    return result;
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Body & body)
{
    BRep_Builder builder;
    std::vector<transl_tk::Shell *> const shells = listed(body, &transl_tk::Body::forEachShell);
    bool isSolid = !shells.empty();
    for (auto * const shell : shells)
        isSolid = isSolid && shell->getShellFlag();
    if (isSolid) {
        TopoDS_Solid solid;
        builder.MakeSolid(solid);
        for (auto * const shell : shells)
            builder.Add(solid, shapeOf(*shell));
        return solid;
    }
    if (shells.size() == 1)
        return shapeOf(*shells.front());
    TopoDS_Compound compound;
    builder.MakeCompound(compound);
    for (auto * const shell : shells)
        builder.Add(compound, shapeOf(*shell));
    return compound;
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Shell & shell)
{
    BRep_Builder builder;
    TopoDS_Shell result;
    builder.MakeShell(result);
    for (auto * const face : listed(shell, &transl_tk::Shell::forEachFace)) {
        try {
            builder.Add(result, faceOf(*face));
        } catch (Standard_Failure const & failure) {
            fault("face", *face, failure.GetMessageString());
        }
    }
    result.Closed(BRep_Tool::IsClosed(result));
    return result;
}

TopoDS_Face ShapeBuilder::faceOf(transl_tk::Face & face)
{
    BRep_Builder builder;
    TopoDS_Face result;
    if (face.getSurface() == nullptr || face.getSurface()->getSurface() == nullptr)
        throw Standard_Failure("it has no surface");
    builder.MakeFace(result, surfaceOf(*face.getSurface()), toleranceOf(face));
    std::vector<Trace> traces;
    auto const loops = listed(face, &transl_tk::Face::forEachLoop);
    for (auto * const loop : loops)
        addLoop(result, *loop, face.getSense(), traces);
    if (loops.empty())
        builder.NaturalRestriction(result, true);
    setTraces(result, traces);
    if (!face.getSense())
        result.Reverse();
    return result;
}

void ShapeBuilder::addLoop(TopoDS_Face & face, transl_tk::Loop & loop, bool faceSense,
                           std::vector<Trace> & traces)
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
        Trace * trace = nullptr;
        for (Trace & known : traces) {
            if (known.edge.IsSame(edge))
                trace = &known;
        }
        if (trace == nullptr)
            trace = &traces.emplace_back(Trace{edge});
        (along ? trace->hasAlong : trace->hasAgainst) = true;
        auto * const uv = fin->getUVCurve();
        if (uv != nullptr && uv->getCurve() != nullptr)
            (along ? trace->along : trace->against) = kernelUvCurve(*uv->getCurve());
    }
    wire.Closed(BRep_Tool::IsClosed(wire));
    builder.Add(face, wire);
}

void ShapeBuilder::setTraces(TopoDS_Face const & face, std::vector<Trace> & traces)
{
    bool const isPlane = !Handle(Geom_Plane)::DownCast(BRep_Tool::Surface(face)).IsNull();
    for (Trace & trace : traces) {
        // The kernel works out the traces on planes by itself.
        if (!isPlane)
            setTrace(face, trace);
    }
}

void ShapeBuilder::setTrace(TopoDS_Face const & face, Trace & trace)
{
    BRep_Builder builder;
    TopLoc_Location const here;
    Handle(Geom_Surface) const surface = BRep_Tool::Surface(face);
    double const tolerance = BRep_Tool::Tolerance(trace.edge);
    UvStretch const & first = trace.along.curve.IsNull() ? trace.against : trace.along;
    if (first.curve.IsNull()) {
        ShapeFix_Edge().FixAddPCurve(trace.edge, face, trace.hasAlong && trace.hasAgainst);
        return;
    }
    if (!trace.along.curve.IsNull() && !trace.against.curve.IsNull())
        builder.UpdateEdge(trace.edge, trace.along.curve, trace.against.curve, surface, here,
                           tolerance);
    else
        builder.UpdateEdge(trace.edge, first.curve, surface, here, tolerance);
    if (BRep_Tool::Degenerated(trace.edge)) {
        builder.Range(trace.edge, first.first, first.last);
        builder.Range(trace.edge, surface, here, first.first, first.last);
    } else if (!isSynchronous(trace.edge, first, *surface)) {
        builder.Range(trace.edge, surface, here, first.first, first.last);
        builder.SameRange(trace.edge, false);
        builder.SameParameter(trace.edge, false);
        BRepLib::SameParameter(trace.edge, tolerance);
    }
}

TopoDS_Edge ShapeBuilder::edgeOf(transl_tk::Edge & edge)
{
    TopoDS_Edge & result = m_Edges[&edge];
    if (!result.IsNull())
        return result;
    BRep_Builder builder;
    auto * const carrier = edge.getCurve();
    if (carrier != nullptr && carrier->getCurve() != nullptr) {
        Handle(Geom_Curve) const curve = kernelCurve(*carrier->getCurve());
        builder.MakeEdge(result, curve, toleranceOf(edge));
        auto const & range = carrier->getCurve()->getParameterization().m_Values;
        if (range.size() > 1)
            builder.Range(result, range.front(), range.back());
    } else {
        builder.MakeEdge(result);
        builder.UpdateEdge(result, toleranceOf(edge));
        builder.Degenerated(result, true);
    }
    auto * const start = edge.getSense() ? edge.getStartVertex() : edge.getEndVertex();
    auto * const end = edge.getSense() ? edge.getEndVertex() : edge.getStartVertex();
    if (start != nullptr)
        builder.Add(result, vertexOf(*start).Oriented(TopAbs_FORWARD));
    if (end != nullptr)
        builder.Add(result, vertexOf(*end).Oriented(TopAbs_REVERSED));
    return result;
}

TopoDS_Vertex ShapeBuilder::vertexOf(transl_tk::Vertex & vertex)
{
    TopoDS_Vertex & result = m_Vertices[&vertex];
    if (!result.IsNull())
        return result;
    geom::Point * point = nullptr;
    double parameter = 0;
    vertex.getGeometry(point, parameter);
    if (point == nullptr)
        throw Standard_Failure("a vertex is given by a parameter of its curve alone");
    double x = 0;
    double y = 0;
    double z = 0;
    point->getCoordinates(x, y, z);
    BRep_Builder().MakeVertex(result, {x, y, z}, toleranceOf(vertex));
    return result;
}

Handle(Geom_Surface) ShapeBuilder::surfaceOf(transl_tk::Surface & surface)
{
    Handle(Geom_Surface) & result = m_Surfaces[&surface];
    if (result.IsNull())
        result = kernelSurface(*surface.getSurface());
    return result;
}

double ShapeBuilder::toleranceOf(transl_tk::Base const & entity) const
{
    auto const found = m_Tolerances.find(&entity);
    return found == m_Tolerances.end() ? Precision::Confusion() : found->second;
}

void ShapeBuilder::fault(char const * what, transl_tk::Base const & entity,
                         std::string const & words)
{
    m_Faults.push_back("The " + std::string(what) + " " + std::to_string(entity.getId()) +
                       " was left out: " + words + ".");
}

} // namespace step
