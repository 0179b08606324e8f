#include "geom/proxy_point.h"

namespace geom {

Point * Point::create(double const & x, double const & y, double const & z)
{
    return new ProxyPoint(x, y, z);
}

void Point::destruct(Point * point)
{
    delete point;
}

} // namespace geom
