#ifndef KELD_TRANSL_GEOM_PROXY_CYLINDER_H
#define KELD_TRANSL_GEOM_PROXY_CYLINDER_H

#include "geom/placement.h"
#include "geom/proxy_surface.h"
#include "geom/scaling.h"

#include <keld-transl/geom/cylinder.h>

namespace geom {

class ProxyCylinder final : public Placed<SurfaceKind<Cylinder, Surface::Type::Cylinder>>
{
public:
    ProxyCylinder(Placement const & placement, double radius, Parameterization u,
                  Parameterization v)
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
