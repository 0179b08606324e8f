#include "geom/proxy_cone.h"

namespace geom {

Cone * Cone::create(double const (&location)[3], double const (&first)[3],
                    double const (&second)[3], double const (&/*ignored*/)[3],
                    double const & radius, double const & angle, Parameterization const & u,
                    Parameterization const & v)
{
    return new ProxyCone(placed(location, first, second), radius, angle, u, v);
}

} // namespace geom
