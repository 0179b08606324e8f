#include "model/carrier.h"

#include <keld-transl/topology/surface.h>

namespace transl_tk {

namespace {

class ProxySurface final : public Surface, public Pooled<ProxySurface>
{
public:
    ProxySurface(int id, geom::Surface * surface) : Surface(id), m_Surface(surface) {}
    ProxySurface(ProxySurface const &) = delete;
    ProxySurface & operator=(ProxySurface const &) = delete;
    ~ProxySurface() override { geom::Surface::destruct(m_Surface); }

    int getEntityKind() override { return EntityKindSurface; }

    geom::Surface * getSurface() override { return m_Surface; }

private:
    geom::Surface * m_Surface;
};

} // namespace

Surface * Surface::create(int const & id, geom::Surface * surface)
{
    return createCarrier<ProxySurface>(&SubPool::m_Surfaces, id, surface);
}

void Surface::destruct(Surface * carrier)
{
    delete carrier;
}

Surface::~Surface()
{
    leaveStore(&SubPool::m_Surfaces, this);
}

} // namespace transl_tk
