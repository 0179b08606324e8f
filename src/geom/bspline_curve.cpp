#include "geom/proxy_bspline_curve.h"

namespace geom {

BSplineCurve * BSplineCurve::create(int const & degree, bool const & flagA, bool const & flagB,
                                    int const & knotCount, int const * multiplicities,
                                    double const * knots, int const & pointCount,
                                    double const * points, double const * weights,
                                    Parameterization const & parameterization)
{
    return new ProxyBSplineCurve(
        copiedSpline<3>(copiedForm(degree, flagA, flagB, knotCount, multiplicities, knots),
                        pointCount, points, weights),
        parameterization);
}

void ProxyBSplineCurve::reverse()
{
    SplineCurve::reverse();
    auto & values = m_Parameterization.m_Values;
    if (values.size() < 2)
        return;
    double const sum = values.back() + values.front();
    for (double & value : values)
        value = sum - value;
    std::reverse(values.begin(), values.end());
}

} // namespace geom
