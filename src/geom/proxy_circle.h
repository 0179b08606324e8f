#ifndef KELD_TRANSL_GEOM_PROXY_CIRCLE_H
#define KELD_TRANSL_GEOM_PROXY_CIRCLE_H

#include "geom/placement.h"
#include "geom/proxy_curve.h"
#include "geom/scaling.h"

#include <keld-transl/geom/circle.h>

namespace geom {

class ProxyCircle final : public Placed<CurveKind<Circle, Curve::Type::Circle>>
{
public:
    ProxyCircle(Placement const & placement, double radius, Parameterization parameterization)
        : Placed(placement, std::move(parameterization)), m_Radius(radius)
    {}

    double getRadius() override { return m_Radius; }

    void scaleBy(Scaling const & scaling)
    {
        scaling.position(m_Placement.location);
        scaling.length(m_Radius);
    }

private:
    double m_Radius;
};

} // namespace geom

#endif
