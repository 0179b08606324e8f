#ifndef KELD_TRANSL_GEOM_PROXY_CURVE_H
#define KELD_TRANSL_GEOM_PROXY_CURVE_H

#include <keld-transl/geom/curve.h>

#include <utility>

namespace geom {

/// What every hidden curve holds.
class ProxyCurve
{
protected:
    explicit ProxyCurve(Parameterization parameterization)
        : m_Parameterization(std::move(parameterization))
    {}

    Parameterization m_Parameterization;
};

/// The half of a hidden class that all kinds of curves share.
template <class Kind, Curve::Type Number> class CurveKind : public Kind, protected ProxyCurve
{
public:
    explicit CurveKind(Parameterization parameterization) : ProxyCurve(std::move(parameterization))
    {}

    Parameterization const & getParameterization() final { return m_Parameterization; }
    Curve::Type getType() final { return Number; }
};

} // namespace geom

#endif
