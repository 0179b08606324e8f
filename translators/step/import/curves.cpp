#include "import/curves.h"

#include "import/placement.h"
#include "import/spline_arrays.h"

#include <keld-transl/geom/bspline_curve.h>
#include <keld-transl/geom/circle.h>
#include <keld-transl/geom/ellipse.h>
#include <keld-transl/geom/line.h>

#include <GeomConvert.hxx>
#include <GeomConvert_ApproxCurve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BezierCurve.hxx>
#include <Geom_Circle.hxx>
#include <Geom_Ellipse.hxx>
#include <Geom_Hyperbola.hxx>
#include <Geom_Line.hxx>
#include <Geom_OffsetCurve.hxx>
#include <Geom_Parabola.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <Precision.hxx>

namespace step {

namespace {

geom::Curve * splineFrom(Geom_BSplineCurve const & curve, double first, double last)
{
    Knots const knots = knotsOf(curve);
    SplineArrays const arrays = arraysOf(curve);
    return geom::BSplineCurve::create(curve.Degree(), curve.IsPeriodic(), curve.IsClosed(),
                                      knots.count(), knots.multiplicities.data(),
                                      knots.values.data(), curve.NbPoles(), arrays.points.data(),
                                      arrays.weightsOrNull(), rangeOf(first, last));
}

geom::Curve * lineFrom(gp_Lin const & line, double first, double last)
{
    return geom::Line::create(Triple(line.Location()).values, Triple(line.Direction()).values,
                              rangeOf(first, last));
}

geom::Curve * circleFrom(gp_Circ const & circle, double first, double last)
{
    Placement const place(circle.Position());
    return geom::Circle::create(place.location.values, place.first.values, place.second.values,
                                place.location.values, circle.Radius(),
                                angularRangeOf(first, last));
}

geom::Curve * ellipseFrom(gp_Elips const & ellipse, double first, double last)
{
    Placement const place(ellipse.Position());
    return geom::Ellipse::create(place.location.values, place.first.values, place.second.values,
                                 place.location.values, ellipse.MajorRadius(),
                                 ellipse.MinorRadius(), angularRangeOf(first, last));
}

/// A conic without a form of its own: its stretch as a spline of degree two.
CurveResult conicAsSpline(Handle(Geom_Curve) const & conic, double first, double last,
                          char const * what, bool sameParameters)
{
    if (Precision::IsInfinite(first) || Precision::IsInfinite(last))
        return {};
    Handle(Geom_BSplineCurve) const spline =
        GeomConvert::CurveToBSplineCurve(new Geom_TrimmedCurve(conic, first, last));
    return {splineFrom(*spline, spline->FirstParameter(), spline->LastParameter()),
            std::string(what) + " as B-spline curve", sameParameters};
}

CurveResult approximated(Handle(Geom_Curve) const & curve, double first, double last)
{
    constexpr int Segments = 200;
    constexpr int Degree = 9;
    GeomConvert_ApproxCurve approximation(new Geom_TrimmedCurve(curve, first, last),
                                          Precision::Confusion(), GeomAbs_C2, Segments, Degree);
    if (!approximation.HasResult())
        return {};
    return {splineFrom(*approximation.Curve(), first, last),
            std::string(curve->DynamicType()->Name()) == "Geom_OffsetCurve"
                ? "offset curve approximated by a B-spline curve"
                : "other curve approximated by a B-spline curve"};
}

} // namespace

CurveResult makeCurve(Handle(Geom_Curve) const & given, double first, double last)
{
    Handle(Geom_Curve) curve = given;
    while (auto const trimmed = Handle(Geom_TrimmedCurve)::DownCast(curve))
        curve = trimmed->BasisCurve();

    if (auto const line = Handle(Geom_Line)::DownCast(curve))
        return {lineFrom(line->Lin(), first, last), {}};
    if (auto const circle = Handle(Geom_Circle)::DownCast(curve))
        return {circleFrom(circle->Circ(), first, last), {}};
    if (auto const ellipse = Handle(Geom_Ellipse)::DownCast(curve))
        return {ellipseFrom(ellipse->Elips(), first, last), {}};
    if (auto const spline = Handle(Geom_BSplineCurve)::DownCast(curve))
        return {splineFrom(*spline, first, last), {}};
    if (Handle(Geom_BezierCurve)::DownCast(curve))
        return {splineFrom(*GeomConvert::CurveToBSplineCurve(curve), first, last),
                "Bezier curve as B-spline curve"};
    if (Handle(Geom_Parabola)::DownCast(curve))
        return conicAsSpline(curve, first, last, "parabola", true);
    if (Handle(Geom_Hyperbola)::DownCast(curve))
        return conicAsSpline(curve, first, last, "hyperbola", false);
    return approximated(curve, first, last);
}

} // namespace step
