#include "import/spline_arrays.h"

#include <Geom2d_BSplineCurve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>

namespace step {

namespace {

Knots knotsFrom(TColStd_Array1OfReal const & values, TColStd_Array1OfInteger const & multiplicities)
{
    return {{values.begin(), values.end()}, {multiplicities.begin(), multiplicities.end()}};
}

void append(std::vector<double> & points, gp_Pnt const & point)
{
    points.insert(points.end(), {point.X(), point.Y(), point.Z()});
}

void append(std::vector<double> & points, gp_Pnt2d const & point)
{
    points.insert(points.end(), {point.X(), point.Y()});
}

template <class Curve> SplineArrays curveArrays(Curve const & curve)
{
    SplineArrays result;
    auto const count = static_cast<std::size_t>(curve.NbPoles());
    result.points.reserve(3 * count);
    for (int i = 1; i <= curve.NbPoles(); ++i)
        append(result.points, curve.Pole(i));
    if (curve.IsRational()) {
        result.weights.reserve(count);
        for (int i = 1; i <= curve.NbPoles(); ++i)
            result.weights.push_back(curve.Weight(i));
    }
    return result;
}

} // namespace

Knots knotsOf(Geom_BSplineCurve const & curve)
{
    return knotsFrom(curve.Knots(), curve.Multiplicities());
}

Knots knotsOf(Geom2d_BSplineCurve const & curve)
{
    return knotsFrom(curve.Knots(), curve.Multiplicities());
}

Knots uKnotsOf(Geom_BSplineSurface const & surface)
{
    return knotsFrom(surface.UKnots(), surface.UMultiplicities());
}

Knots vKnotsOf(Geom_BSplineSurface const & surface)
{
    return knotsFrom(surface.VKnots(), surface.VMultiplicities());
}

SplineArrays arraysOf(Geom_BSplineCurve const & curve)
{
    return curveArrays(curve);
}

SplineArrays arraysOf(Geom2d_BSplineCurve const & curve)
{
    return curveArrays(curve);
}

SplineArrays arraysOf(Geom_BSplineSurface const & surface)
{
    SplineArrays result;
    bool const rational = surface.IsURational() || surface.IsVRational();
    for (int u = 1; u <= surface.NbUPoles(); ++u) {
        for (int v = 1; v <= surface.NbVPoles(); ++v) {
            append(result.points, surface.Pole(u, v));
            if (rational)
                result.weights.push_back(surface.Weight(u, v));
        }
    }
    return result;
}

} // namespace step
