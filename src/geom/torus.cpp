#include "geom/proxy_torus.h"

namespace geom {

Torus * Torus::create(double const (&location)[3], double const (&first)[3],
                      double const (&second)[3], double const (&/*ignored*/)[3],
                      double const & firstRadius, double const & secondRadius,
                      Parameterization const & u, Parameterization const & v)
{
    return new ProxyTorus(placed(location, first, second), firstRadius, secondRadius, u, v);
}

} // namespace geom
