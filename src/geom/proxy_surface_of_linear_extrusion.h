#ifndef KELD_TRANSL_GEOM_PROXY_SURFACE_OF_LINEAR_EXTRUSION_H
#define KELD_TRANSL_GEOM_PROXY_SURFACE_OF_LINEAR_EXTRUSION_H

#include "geom/placement.h"
#include "geom/proxy_surface.h"
#include "geom/scaling.h"

#include <keld-transl/geom/surface_of_linear_extrusion.h>

namespace geom {

class ProxySurfaceOfLinearExtrusion final
    : public SurfaceKind<SurfaceOfLinearExtrusion, Surface::Type::LinearExtrusion>
{
public:
    ProxySurfaceOfLinearExtrusion(Curve * curve, Triple const & direction, Parameterization u,
                                  Parameterization v)
        : SurfaceKind(std::move(u), std::move(v)), m_Curve(curve), m_Direction(direction)
    {}
    ProxySurfaceOfLinearExtrusion(ProxySurfaceOfLinearExtrusion const &) = delete;
    ProxySurfaceOfLinearExtrusion & operator=(ProxySurfaceOfLinearExtrusion const &) = delete;
    ~ProxySurfaceOfLinearExtrusion() override { Curve::destruct(m_Curve); }

    Curve * getCurve() override { return m_Curve; }
    void getDirection(double (&direction)[3]) override { fill(direction, m_Direction); }

    void scaleBy(Scaling const & scaling) { scaleCurve(m_Curve, scaling); }

private:
    Curve * m_Curve;
    Triple m_Direction;
};

} // namespace geom

#endif
