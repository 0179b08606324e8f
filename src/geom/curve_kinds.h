#ifndef KELD_TRANSL_GEOM_CURVE_KINDS_H
#define KELD_TRANSL_GEOM_CURVE_KINDS_H

#include "geom/proxy_bspline_curve.h"
#include "geom/proxy_circle.h"
#include "geom/proxy_composite_curve.h"
#include "geom/proxy_ellipse.h"
#include "geom/proxy_line.h"
#include "geom/proxy_line_strip.h"

namespace geom {

/// Calls `visit` with the hidden object of a curve, whatever kind it is of. Nothing is called for a
/// curve of a class of the host's own.
template <class Visit> void visitCurve(Curve & curve, Visit && visit)
{
    auto const as = [&]<class Proxy>(Proxy * proxy) {
        if (proxy != nullptr)
            visit(*proxy);
    };
    switch (curve.getType()) {
    case Curve::Type::Circle:
        return as(own<ProxyCircle>(&curve));
    case Curve::Type::BSplineCurve:
        return as(own<ProxyBSplineCurve>(&curve));
    case Curve::Type::Ellipse:
        return as(own<ProxyEllipse>(&curve));
    case Curve::Type::Line:
        return as(own<ProxyLine>(&curve));
    case Curve::Type::LineStrip:
        return as(own<ProxyLineStrip>(&curve));
    case Curve::Type::CompositeCurve:
        return as(own<ProxyCompositeCurve>(&curve));
    }
}

} // namespace geom

#endif
