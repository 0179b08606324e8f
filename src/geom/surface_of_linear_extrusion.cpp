#include "geom/proxy_surface_of_linear_extrusion.h"

namespace geom {

SurfaceOfLinearExtrusion * SurfaceOfLinearExtrusion::create(Curve * const curve,
                                                            double const (&direction)[3],
                                                            Parameterization const & u,
                                                            Parameterization const & v)
{
    return new ProxySurfaceOfLinearExtrusion(curve, std::to_array(direction), u, v);
}

} // namespace geom
