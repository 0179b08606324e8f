#ifndef KELD_TRANSL_GEOM_PROXY_BSPLINE_CURVE_H
#define KELD_TRANSL_GEOM_PROXY_BSPLINE_CURVE_H

#include "geom/proxy_curve.h"
#include "geom/scaling.h"
#include "geom/spline_curve.h"

#include <keld-transl/geom/bspline_curve.h>

namespace geom {

class ProxyBSplineCurve final
    : public SplineCurve<CurveKind<BSplineCurve, Curve::Type::BSplineCurve>, 3>
{
public:
    ProxyBSplineCurve(SplineData<3> data, Parameterization parameterization)
        : SplineCurve(std::move(data), std::move(parameterization))
    {}

    void reverse() override;

    void scaleBy(Scaling const & scaling)
    {
        for (auto & point : m_Data.points)
            scaling.position(point);
    }
};

} // namespace geom

#endif
