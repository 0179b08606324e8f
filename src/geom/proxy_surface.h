#ifndef KELD_TRANSL_GEOM_PROXY_SURFACE_H
#define KELD_TRANSL_GEOM_PROXY_SURFACE_H

#include <keld-transl/geom/surface.h>

#include <utility>

namespace geom {

/// What every hidden surface holds.
class ProxySurface
{
protected:
    ProxySurface(Parameterization u, Parameterization v)
        : m_ParameterizationU(std::move(u)), m_ParameterizationV(std::move(v))
    {}

    Parameterization m_ParameterizationU;
    Parameterization m_ParameterizationV;
};

/// The half of a hidden class that all kinds of surfaces share.
template <class Kind, Surface::Type Number> class SurfaceKind : public Kind, protected ProxySurface
{
public:
    SurfaceKind(Parameterization u, Parameterization v) : ProxySurface(std::move(u), std::move(v))
    {}

    Surface::Type getType() final { return Number; }
    Parameterization const & getParameterizationU() final { return m_ParameterizationU; }
    Parameterization const & getParameterizationV() final { return m_ParameterizationV; }
};

} // namespace geom

#endif
