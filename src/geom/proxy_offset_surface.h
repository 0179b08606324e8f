#ifndef KELD_TRANSL_GEOM_PROXY_OFFSET_SURFACE_H
#define KELD_TRANSL_GEOM_PROXY_OFFSET_SURFACE_H

#include "geom/proxy_surface.h"
#include "geom/scaling.h"

#include <keld-transl/geom/offset_surface.h>

namespace geom {

class ProxyOffsetSurface final : public SurfaceKind<OffsetSurface, Surface::Type::Offset>
{
public:
    ProxyOffsetSurface(Surface * base, double distance, Parameterization u, Parameterization v)
        : SurfaceKind(std::move(u), std::move(v)), m_Base(base), m_Distance(distance)
    {}

    Surface * getBaseSurface() override { return m_Base; }
    double getDistance() override { return m_Distance; }

    /// Scales the distance alone; `Surface::scale` goes on to the base.
    void scaleBy(Scaling const & scaling) { scaling.length(m_Distance); }

private:
    Surface * m_Base; ///< not owned
    double m_Distance;
};

} // namespace geom

#endif
