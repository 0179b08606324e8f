#include "export/edge_traces.h"

#include <BRepLib.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom_Curve.hxx>
#include <Geom_Plane.hxx>
#include <Geom_Surface.hxx>
#include <Precision.hxx>
#include <ShapeFix_Edge.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Face.hxx>
#include <algorithm>
#include <cmath>

namespace step {

namespace {

/// Whether a trace runs through the same points as its edge at the same parameters.
bool isSynchronous(TopoDS_Edge const & edge, UvStretch const & trace, Geom_Surface const & surface)
{
    double first = 0;
    double last = 0;
    Handle(Geom_Curve) const curve = BRep_Tool::Curve(edge, first, last);
    if (curve.IsNull())
        return false;
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

bool hasCurve(TopoDS_Edge const & edge)
{
    double first = 0;
    double last = 0;
    return !BRep_Tool::Curve(edge, first, last).IsNull();
}

} // namespace

void EdgeTraces::add(TopoDS_Edge const & edge, bool along, UvStretch const & uv)
{
    auto trace = std::find_if(m_Traces.begin(), m_Traces.end(),
                              [&](Trace const & known) { return known.edge.IsSame(edge); });
    if (trace == m_Traces.end())
        trace = m_Traces.insert(trace, Trace{edge});
    (along ? trace->hasAlong : trace->hasAgainst) = true;
    if (!uv.curve.IsNull())
        (along ? trace->along : trace->against) = uv;
}

void EdgeTraces::setOn(TopoDS_Face const & face) const
{
    bool const isPlane = !Handle(Geom_Plane)::DownCast(BRep_Tool::Surface(face)).IsNull();
    for (Trace const & trace : m_Traces) {
        if (!isPlane || !hasCurve(trace.edge))
            set(face, trace);
        if (!hasCurve(trace.edge) && !BRep_Tool::Degenerated(trace.edge))
            BRepLib::BuildCurve3d(trace.edge);
    }
}

void EdgeTraces::set(TopoDS_Face const & face, Trace const & trace)
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
    if (!hasCurve(trace.edge)) {
        builder.Range(trace.edge, first.first, first.last);
        builder.Range(trace.edge, surface, here, first.first, first.last);
    } else if (!isSynchronous(trace.edge, first, *surface)) {
        builder.Range(trace.edge, surface, here, first.first, first.last);
        builder.SameRange(trace.edge, false);
        builder.SameParameter(trace.edge, false);
        BRepLib::SameParameter(trace.edge, tolerance);
    }
}

} // namespace step
