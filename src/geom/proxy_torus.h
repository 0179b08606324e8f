#ifndef KELD_TRANSL_GEOM_PROXY_TORUS_H
#define KELD_TRANSL_GEOM_PROXY_TORUS_H

#include "geom/placement.h"
#include "geom/proxy_surface.h"
#include "geom/scaling.h"

#include <keld-transl/geom/torus.h>

namespace geom {

class ProxyTorus final : public Placed<SurfaceKind<Torus, Surface::Type::Torus>>
{
public:
    ProxyTorus(Placement const & placement, double firstRadius, double secondRadius,
               Parameterization u, Parameterization v)
        : Placed(placement, std::move(u), std::move(v)), m_FirstRadius(firstRadius),
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
