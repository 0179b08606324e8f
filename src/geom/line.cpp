#include "geom/proxy_line.h"

namespace geom {

Line * Line::create(double const (&point)[3], double const (&direction)[3],
                    Parameterization const & parameterization)
{
    return new ProxyLine(std::to_array(point), std::to_array(direction), parameterization);
}

} // namespace geom
