#include "geom/proxy_surface_of_revolution.h"

namespace geom {

SurfaceOfRevolution * SurfaceOfRevolution::create(double const (&point)[3],
                                                  double const (&direction)[3], Curve * const curve,
                                                  Parameterization const & u,
                                                  Parameterization const & v)
{
    return new ProxySurfaceOfRevolution(std::to_array(point), std::to_array(direction), curve, u,
                                        v);
}

} // namespace geom
