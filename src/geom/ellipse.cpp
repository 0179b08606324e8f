#include "geom/proxy_ellipse.h"

namespace geom {

Ellipse * Ellipse::create(double const (&location)[3], double const (&first)[3],
                          double const (&second)[3], double const (&/*ignored*/)[3],
                          double const & firstRadius, double const & secondRadius,
                          Parameterization const & parameterization)
{
    return new ProxyEllipse(placed(location, first, second), firstRadius, secondRadius,
                            parameterization);
}

} // namespace geom
