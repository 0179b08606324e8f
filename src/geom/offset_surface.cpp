#include "geom/proxy_offset_surface.h"

namespace geom {

OffsetSurface * OffsetSurface::create(Surface * const base, double const & distance,
                                      Parameterization const & u, Parameterization const & v)
{
    return new ProxyOffsetSurface(base, distance, u, v);
}

} // namespace geom
