#ifndef KELD_TRANSL_GEOM_PROXY_SPHERE_H
#define KELD_TRANSL_GEOM_PROXY_SPHERE_H

#include "geom/placement.h"
#include "geom/proxy_surface.h"
#include "geom/scaling.h"

#include <keld-transl/geom/sphere.h>

namespace geom {

class ProxySphere final : public Placed<SurfaceKind<Sphere, Surface::Type::Sphere>>
{
public:
    ProxySphere(Placement const & placement, double radius, Parameterization u, Parameterization v)
        : Placed(placement, std::move(u), std::move(v)), m_Radius(radius)
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
