#ifndef KELD_TRANSL_GEOM_PROXY_ELLIPSE_H
#define KELD_TRANSL_GEOM_PROXY_ELLIPSE_H

#include "geom/placement.h"
#include "geom/proxy_curve.h"
#include "geom/scaling.h"

#include <keld-transl/geom/ellipse.h>

namespace geom {

class ProxyEllipse final : public Placed<CurveKind<Ellipse, Curve::Type::Ellipse>>
{
public:
    ProxyEllipse(Placement const & placement, double firstRadius, double secondRadius,
                 Parameterization parameterization)
        : Placed(placement, std::move(parameterization)), m_FirstRadius(firstRadius),
          m_SecondRadius(secondRadius)
    {}

    double getFirstRadius() override { return m_FirstRadius; }
    double getSecondRadius() override { return m_SecondRadius; }

    void scaleBy(Scaling const & scaling)
    {
        scaling.position(m_Placement.location);
        scaling.length(m_FirstRadius);
        scaling.length(m_SecondRadius);
    }

private:
    double m_FirstRadius;
    double m_SecondRadius;
};

} // namespace geom

#endif
