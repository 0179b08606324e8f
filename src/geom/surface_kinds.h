#ifndef KELD_TRANSL_GEOM_SURFACE_KINDS_H
#define KELD_TRANSL_GEOM_SURFACE_KINDS_H

#include "geom/proxy_bspline_surface.h"
#include "geom/proxy_cone.h"
#include "geom/proxy_cylinder.h"
#include "geom/proxy_offset_surface.h"
#include "geom/proxy_plane.h"
#include "geom/proxy_ruled_surface.h"
#include "geom/proxy_sphere.h"
#include "geom/proxy_surface_of_linear_extrusion.h"
#include "geom/proxy_surface_of_revolution.h"
#include "geom/proxy_torus.h"

namespace geom {

/// Calls `visit` with the hidden object of a surface, whatever kind it is of. Nothing is called for
/// a surface of a class of the host's own.
template <class Visit> void visitSurface(Surface & surface, Visit && visit)
{
    auto const as = [&]<class Proxy>(Proxy * proxy) {
        if (proxy != nullptr)
            visit(*proxy);
    };
    switch (surface.getType()) {
    case Surface::Type::BSpline:
        return as(own<ProxyBSplineSurface>(&surface));
    case Surface::Type::Cone:
        return as(own<ProxyCone>(&surface));
    case Surface::Type::Cylinder:
        return as(own<ProxyCylinder>(&surface));
    case Surface::Type::Offset:
        return as(own<ProxyOffsetSurface>(&surface));
    case Surface::Type::Revolution:
        return as(own<ProxySurfaceOfRevolution>(&surface));
    case Surface::Type::Ruled:
        return as(own<ProxyRuledSurface>(&surface));
    case Surface::Type::LinearExtrusion:
        return as(own<ProxySurfaceOfLinearExtrusion>(&surface));
    case Surface::Type::Torus:
        return as(own<ProxyTorus>(&surface));
    case Surface::Type::Sphere:
        return as(own<ProxySphere>(&surface));
    case Surface::Type::Plane:
        return as(own<ProxyPlane>(&surface));
    }
}

} // namespace geom

#endif
