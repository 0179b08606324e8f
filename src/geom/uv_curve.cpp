#include "geom/proxy_uv_curve.h"

namespace geom {

UVCurve * UVCurve::create(int const & degree, bool const & flagA, bool const & flagB,
                          int const & knotCount, int const * multiplicities, double const * knots,
                          int const & pointCount, double const * points, double const * weights)
{
    return new ProxyUVCurve(
        copiedSpline<2>(copiedForm(degree, flagA, flagB, knotCount, multiplicities, knots),
                        pointCount, points, weights));
}

void UVCurve::destruct(UVCurve * curve)
{
    if (curve == nullptr)
        return;
    delete curve->getTrimPoints();
    delete curve;
}

trimmingPoints * UVCurve::getTrimPoints() const
{
    return m_TrimPoints;
}

void UVCurve::setTrimPoints(trimmingPoints * points)
{
    m_TrimPoints = points;
}

} // namespace geom
