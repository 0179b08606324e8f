#include "geom/proxy_plane.h"

namespace geom {

Plane * Plane::create(double const (&location)[3], double const (&first)[3],
                      double const (&second)[3], double const (&/*ignored*/)[3],
                      Parameterization const & u, Parameterization const & v)
{
    return new ProxyPlane(placed(location, first, second), u, v);
}

} // namespace geom
