#include "geom/proxy_circle.h"

namespace geom {

Circle * Circle::create(double const (&location)[3], double const (&first)[3],
                        double const (&second)[3], double const (&/*ignored*/)[3],
                        double const & radius, Parameterization const & parameterization)
{
    return new ProxyCircle(placed(location, first, second), radius, parameterization);
}

} // namespace geom
