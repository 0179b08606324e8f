#include "geom/proxy_ruled_surface.h"

namespace geom {

RuledSurface * RuledSurface::create(Curve * const first, Curve * const second,
                                    Parameterization const & u, Parameterization const & v)
{
    return new ProxyRuledSurface(first, second, u, v);
}

} // namespace geom
