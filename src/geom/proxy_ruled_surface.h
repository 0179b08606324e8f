#ifndef KELD_TRANSL_GEOM_PROXY_RULED_SURFACE_H
#define KELD_TRANSL_GEOM_PROXY_RULED_SURFACE_H

#include "geom/proxy_surface.h"
#include "geom/scaling.h"

#include <keld-transl/geom/ruled_surface.h>

namespace geom {

class ProxyRuledSurface final : public SurfaceKind<RuledSurface, Surface::Type::Ruled>
{
public:
    ProxyRuledSurface(Curve * first, Curve * second, Parameterization u, Parameterization v)
        : SurfaceKind(std::move(u), std::move(v)), m_First(first), m_Second(second)
    {}
    ProxyRuledSurface(ProxyRuledSurface const &) = delete;
    ProxyRuledSurface & operator=(ProxyRuledSurface const &) = delete;
    ~ProxyRuledSurface() override
    {
        Curve::destruct(m_First);
        Curve::destruct(m_Second);
    }

    Curve * getFirstCurve() override { return m_First; }
    Curve * getSecondCurve() override { return m_Second; }

    void scaleBy(Scaling const & scaling)
    {
        scaleCurve(m_First, scaling);
        scaleCurve(m_Second, scaling);
    }

private:
    Curve * m_First;
    Curve * m_Second;
};

} // namespace geom

#endif
