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

void Point::scale(Point * point, double const & factor, double const & centreX,
                  double const & centreY, double const & centreZ)
{
    if (auto * const proxy = own<ProxyPoint>(point))
        proxy->scaleBy(Scaling(factor, centreX, centreY, centreZ));
}

} // namespace geom
