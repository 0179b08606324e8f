#ifndef KELD_TRANSL_GEOM_PROXY_SURFACE_OF_REVOLUTION_H
#define KELD_TRANSL_GEOM_PROXY_SURFACE_OF_REVOLUTION_H

#include "geom/placement.h"
#include "geom/proxy_surface.h"
#include "geom/scaling.h"

#include <keld-transl/geom/surface_of_revolution.h>

namespace geom {

class ProxySurfaceOfRevolution final
    : public SurfaceKind<SurfaceOfRevolution, Surface::Type::Revolution>
{
public:
    ProxySurfaceOfRevolution(Triple const & point, Triple const & direction, Curve * curve,
                             Parameterization u, Parameterization v)
        : SurfaceKind(std::move(u), std::move(v)), m_Point(point), m_Direction(direction),
          m_Curve(curve)
    {}
    ProxySurfaceOfRevolution(ProxySurfaceOfRevolution const &) = delete;
    ProxySurfaceOfRevolution & operator=(ProxySurfaceOfRevolution const &) = delete;
    ~ProxySurfaceOfRevolution() override { Curve::destruct(m_Curve); }

    Curve * getCurve() override { return m_Curve; }
    void getAxisPoint(double (&point)[3]) override { fill(point, m_Point); }
    void getAxisDirection(double (&direction)[3]) override { fill(direction, m_Direction); }

    /// The axis point keeps its z: what is required of it, odd as it is.
    void scaleBy(Scaling const & scaling)
    {
        scaling.positionInXY(m_Point);
        scaleCurve(m_Curve, scaling);
    }

private:
    Triple m_Point;
    Triple m_Direction;
    Curve * m_Curve;
};

} // namespace geom

#endif
