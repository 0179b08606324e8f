#include "export/curve_ends.h"

#include <keld-transl/geom/curve.h>

#include <BRep_Tool.hxx>
#include <GeomAPI_ProjectPointOnCurve.hxx>
#include <Geom_Curve.hxx>
#include <Precision.hxx>
#include <Standard_Failure.hxx>
#include <TopoDS_Vertex.hxx>
#include <algorithm>

namespace step {

namespace {

double gap(Geom_Curve const & curve, CurveRange const & range, TopoDS_Vertex const & start,
           TopoDS_Vertex const & end)
{
    return std::max(curve.Value(range.first).Distance(BRep_Tool::Pnt(start)),
                    curve.Value(range.last).Distance(BRep_Tool::Pnt(end)));
}

/// The parameter of the point of the curve that is the nearest to a vertex.
double parameterAt(Handle(Geom_Curve) const & curve, TopoDS_Vertex const & vertex)
{
    gp_Pnt const point = BRep_Tool::Pnt(vertex);
    GeomAPI_ProjectPointOnCurve const projection(point, curve);
    double const first = curve->FirstParameter();
    double const last = curve->LastParameter();
    // The ends of a curve are no feet of perpendiculars.
    if (!Precision::IsInfinite(first) && !Precision::IsInfinite(last)) {
        double const toFirst = point.Distance(curve->Value(first));
        double const toLast = point.Distance(curve->Value(last));
        double const best =
            projection.NbPoints() > 0 ? projection.LowerDistance() : Precision::Infinite();
        if (std::min(toFirst, toLast) <= best)
            return toFirst <= toLast ? first : last;
    }
    if (projection.NbPoints() == 0)
        throw Standard_Failure("a vertex lies beside its curve");
    return projection.LowerDistanceParameter();
}

CurveRange between(Handle(Geom_Curve) const & curve, TopoDS_Vertex const & start,
                   TopoDS_Vertex const & end)
{
    CurveRange range = {parameterAt(curve, start), parameterAt(curve, end)};
    if (curve->IsPeriodic()) {
        if (range.last <= range.first + Precision::PConfusion())
            range.last += curve->Period();
    } else if (curve->IsClosed() && start.IsSame(end)) {
        range = {curve->FirstParameter(), curve->LastParameter()};
    }
    if (range.last <= range.first)
        throw Standard_Failure("it has no length, or runs against its curve");
    return range;
}

} // namespace

CurveRange endsOf(geom::Curve & from, Handle(Geom_Curve) const & curve, TopoDS_Vertex const & start,
                  TopoDS_Vertex const & end)
{
    auto const & values = from.getParameterization().m_Values;
    bool const isGiven = from.getType() != geom::Curve::LineStrip && values.size() > 1 &&
                         values.front() < values.back();
    CurveRange const given = isGiven ? CurveRange{values.front(), values.back()}
                                     : CurveRange{curve->FirstParameter(), curve->LastParameter()};
    bool const isEndless = Precision::IsInfinite(given.first) || Precision::IsInfinite(given.last);
    if (start.IsNull() || end.IsNull()) {
        if (isEndless)
            throw Standard_Failure("the curve has no ends");
        return given;
    }
    if (isEndless)
        return between(curve, start, end);
    // Vertices of real files are off by some tolerance.
    constexpr double Far = 1e-3;
    double const off = gap(*curve, given, start, end);
    double const length =
        curve->Value(given.first).Distance(curve->Value((given.first + given.last) / 2));
    if (off <= Far * std::max(length, 1.0))
        return given;
    CurveRange const other = between(curve, start, end);
    return 10 * gap(*curve, other, start, end) < off ? other : given;
}

} // namespace step
