#include "import/uv_curves.h"

#include "import/spline_arrays.h"

#include <Geom2dConvert.hxx>
#include <Geom2dConvert_ApproxCurve.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_BezierCurve.hxx>
#include <Geom2d_Conic.hxx>
#include <Geom2d_Line.hxx>
#include <Geom2d_TrimmedCurve.hxx>
#include <Precision.hxx>
#include <cmath>

namespace step {

namespace {

geom::UVCurve * lineFrom(Geom2d_Line const & line, double first, double last, UvMap const & map)
{
    gp_Pnt2d const start = line.Value(first);
    gp_Pnt2d const end = line.Value(last);
    double const points[] = {start.X(), map.vFactor * start.Y() + map.vShift, end.X(),
                             map.vFactor * end.Y() + map.vShift};
    double const knots[] = {first, last};
    int const multiplicities[] = {2, 2};
    return geom::UVCurve::create(1, false, false, 2, multiplicities, knots, 2, points, nullptr);
}

geom::UVCurve * splineFrom(Geom2d_BSplineCurve const & curve, UvMap const & map)
{
    Knots const knots = knotsOf(curve);
    SplineArrays arrays = arraysOf(curve);
    for (std::size_t i = 1; i < arrays.points.size(); i += 2)
        arrays.points[i] = map.vFactor * arrays.points[i] + map.vShift;
    return geom::UVCurve::create(curve.Degree(), curve.IsPeriodic(), curve.IsClosed(),
                                 knots.count(), knots.multiplicities.data(), knots.values.data(),
                                 curve.NbPoles(), arrays.points.data(), arrays.weightsOrNull());
}

/// The stretch of a spline that a fin uses. Its whole self, knots and all, when that is it.
Handle(Geom2d_BSplineCurve)
    stretchOf(Handle(Geom2d_BSplineCurve) const & spline, double first, double last)
{
    double const tolerance = Precision::PConfusion();
    if (std::abs(spline->FirstParameter() - first) <= tolerance &&
        std::abs(spline->LastParameter() - last) <= tolerance)
        return spline;
    Handle(Geom2d_BSplineCurve) const stretch =
        Handle(Geom2d_BSplineCurve)::DownCast(spline->Copy());
    stretch->Segment(first, last);
    return stretch;
}

} // namespace

UvCurveResult makeUvCurve(Handle(Geom2d_Curve) const & given, double first, double last,
                          UvMap const & map)
{
    if (Precision::IsInfinite(first) || Precision::IsInfinite(last) || !(first < last))
        return {};
    Handle(Geom2d_Curve) curve = given;
    while (auto const trimmed = Handle(Geom2d_TrimmedCurve)::DownCast(curve))
        curve = trimmed->BasisCurve();

    if (auto const line = Handle(Geom2d_Line)::DownCast(curve))
        return {lineFrom(*line, first, last, map), {}};
    if (auto const spline = Handle(Geom2d_BSplineCurve)::DownCast(curve))
        return {splineFrom(*stretchOf(spline, first, last), map), {}};
    if (Handle(Geom2d_BezierCurve)::DownCast(curve))
        return {splineFrom(*stretchOf(Geom2dConvert::CurveToBSplineCurve(curve), first, last), map),
                "Bezier curve as B-spline curve"};

    Handle(Geom2d_TrimmedCurve) const stretch = new Geom2d_TrimmedCurve(curve, first, last);
    if (Handle(Geom2d_Conic)::DownCast(curve))
        return {splineFrom(*Geom2dConvert::CurveToBSplineCurve(stretch), map),
                "conic as B-spline curve"};
    constexpr int Segments = 200;
    constexpr int Degree = 9;
    Geom2dConvert_ApproxCurve approximation(stretch, Precision::PConfusion(), GeomAbs_C2, Segments,
                                            Degree);
    if (!approximation.HasResult())
        return {};
    return {splineFrom(*approximation.Curve(), map),
            "other curve approximated by a B-spline curve"};
}

} // namespace step
