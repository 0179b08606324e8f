#ifndef KELD_TRANSL_GEOM_PROXY_CONE_H
#define KELD_TRANSL_GEOM_PROXY_CONE_H

#include "geom/placement.h"
#include "geom/proxy_surface.h"
#include "geom/scaling.h"

#include <keld-transl/geom/cone.h>

namespace geom {

class ProxyCone final : public Placed<SurfaceKind<Cone, Surface::Type::Cone>>
{
public:
    ProxyCone(Placement const & placement, double radius, double angle, Parameterization u,
              Parameterization v)
        : Placed(placement, std::move(u), std::move(v)), m_Radius(radius), m_Angle(angle)
    {}

    double getRadius() override { return m_Radius; }
    double getAngle() override { return m_Angle; }

    void scaleBy(Scaling const & scaling)
    {
        scaling.position(m_Placement.location);
        scaling.length(m_Radius);
    }

private:
    double m_Radius;
    double m_Angle;
};

} // namespace geom

#endif
