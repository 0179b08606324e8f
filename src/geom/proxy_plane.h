#ifndef KELD_TRANSL_GEOM_PROXY_PLANE_H
#define KELD_TRANSL_GEOM_PROXY_PLANE_H

#include "geom/placement.h"
#include "geom/proxy_surface.h"
#include "geom/scaling.h"

#include <keld-transl/geom/plane.h>

namespace geom {

class ProxyPlane final : public Placed<SurfaceKind<Plane, Surface::Type::Plane>>
{
public:
    ProxyPlane(Placement const & placement, Parameterization u, Parameterization v)
        : Placed(placement, std::move(u), std::move(v))
    {}

    void scaleBy(Scaling const & scaling) { scaling.position(m_Placement.location); }
};

} // namespace geom

#endif
