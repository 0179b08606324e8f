#include "geom/proxy_cartesian_coord.h"

namespace geom {

CartesianCoord * CartesianCoord::create(double const (&origin)[3], double const (&first)[3],
                                        double const (&second)[3], double const (&third)[3])
{
    return new ProxyCartesianCoord(
        {std::to_array(origin), std::to_array(first), std::to_array(second), std::to_array(third)});
}

void CartesianCoord::destruct(CartesianCoord * coord)
{
    delete coord;
}

void CartesianCoord::scale(CartesianCoord * coord, double const & factor, double const & centreX,
                           double const & centreY, double const & centreZ)
{
    if (auto * const proxy = own<ProxyCartesianCoord>(coord))
        proxy->scaleBy(Scaling(factor, centreX, centreY, centreZ));
}

} // namespace geom
