#include "geom/proxy_bspline_surface.h"

namespace geom {

BSplineSurface *
BSplineSurface::create(int const & degreeU, bool const & flagAU, bool const & flagBU,
                       int const & degreeV, bool const & flagAV, bool const & flagBV,
                       int const & knotCountU, int const * multiplicitiesU, double const * knotsU,
                       int const & knotCountV, int const * multiplicitiesV, double const * knotsV,
                       int const & pointCountU, int const & pointCountV, double const * points,
                       double const * weights, Parameterization const & u,
                       Parameterization const & v, Surface::Type form)
{
    long long const pointCount = static_cast<long long>(pointCountU) * pointCountV;
    SplineSurfaceData data;
    data.pointCountU = pointCountU;
    data.pointCountV = pointCountV;
    data.formU = copiedForm(degreeU, flagAU, flagBU, knotCountU, multiplicitiesU, knotsU);
    data.formV = copiedForm(degreeV, flagAV, flagBV, knotCountV, multiplicitiesV, knotsV);
    data.points = copiedArray<Triple>(points, pointCount);
    data.weights = copiedWeights(weights, pointCount);
    return new ProxyBSplineSurface(std::move(data), form, u, v);
}

} // namespace geom
