#include "export/kernel_geometry.h"
#include "kernel_splines.h"

#include <keld-transl/geom/uv_curve.h>

#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_Line.hxx>
#include <Precision.hxx>
#include <cmath>

namespace step {

namespace {

/// A straight stretch through which the parameter runs at the speed 1 is a line.
Handle(Geom2d_Curve) lineFrom(Geom2d_BSplineCurve const & spline)
{
    if (spline.Degree() != 1 || spline.NbPoles() != 2 || spline.IsRational())
        return nullptr;
    gp_Vec2d const way(spline.Pole(1), spline.Pole(2));
    double const first = spline.FirstParameter();
    double const length = spline.LastParameter() - first;
    if (way.Magnitude() < Precision::PConfusion() ||
        std::abs(way.Magnitude() - length) > Precision::PConfusion())
        return nullptr;
    gp_Dir2d const direction(way);
    return new Geom2d_Line(spline.Pole(1).Translated(-first * gp_Vec2d(direction)), direction);
}

UvStretch stretchOf(Handle(Geom2d_BSplineCurve) const & spline)
{
    UvStretch result = {lineFrom(*spline), spline->FirstParameter(), spline->LastParameter()};
    if (result.curve.IsNull())
        result.curve = spline;
    return result;
}

} // namespace

UvStretch kernelUvCurve(geom::UVCurve & curve)
{
    int degree = 0;
    bool periodic = false;
    bool closed = false;
    curve.getSplineForm(degree, periodic, closed);
    KernelKnots const knots(curve.getNumKnots(), [&](double * values, int * multiplicities) {
        curve.getKnots(values, multiplicities);
    });
    int const count = curve.getNumControlPoints();
    std::vector<double> const points =
        fetched(2LL * count, [&](double * values) { curve.getControlPoints(values); });
    TColgp_Array1OfPnt2d poles(1, count);
    for (int i = 0; i < count; ++i)
        poles.SetValue(i + 1, {points[2 * static_cast<std::size_t>(i)],
                               points[2 * static_cast<std::size_t>(i) + 1]});
    if (curve.isRational()) {
        TColStd_Array1OfReal weights(1, count);
        curve.getWeights(&weights.ChangeFirst());
        return stretchOf(new Geom2d_BSplineCurve(poles, weights, knots.values, knots.multiplicities,
                                                 degree, periodic));
    }
    return stretchOf(
        new Geom2d_BSplineCurve(poles, knots.values, knots.multiplicities, degree, periodic));
}

} // namespace step
