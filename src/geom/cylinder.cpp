#include "geom/proxy_cylinder.h"

namespace geom {

Cylinder * Cylinder::create(double const (&location)[3], double const (&first)[3],
                            double const (&second)[3], double const (&/*ignored*/)[3],
                            double const & radius, Parameterization const & u,
                            Parameterization const & v)
{
    return new ProxyCylinder(placed(location, first, second), radius, u, v);
}

} // namespace geom
