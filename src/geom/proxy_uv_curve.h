#ifndef KELD_TRANSL_GEOM_PROXY_UV_CURVE_H
#define KELD_TRANSL_GEOM_PROXY_UV_CURVE_H

#include "geom/spline_curve.h"

#include <keld-transl/geom/uv_curve.h>

namespace geom {

class ProxyUVCurve final : public SplineCurve<UVCurve, 2>
{
public:
    explicit ProxyUVCurve(SplineData<2> data) : SplineCurve(std::move(data)) {}
};

} // namespace geom

#endif
