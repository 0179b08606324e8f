#include "topology/proxy_fin.h"

#include <keld-transl/topology/uv_curve.h>

namespace transl_tk {

ProxyFin::ProxyFin(int id, Edge * edge, bool sense) : Fin(id), m_Edge(edge, this), m_Sense(sense) {}

ProxyFin::~ProxyFin()
{
    UVCurve::destruct(m_UVCurve);
    m_Edge.release(this);
}

void ProxyFin::destroyAlone()
{
    m_UVCurve = nullptr;
    m_Edge.leave(this);
    m_Edge = EdgeLink();
    delete this;
}

Fin * Fin::create(int const & id, Edge * edge, bool const & sense)
{
    return createEntity<ProxyFin>(&SubPool::m_Fins, id, edge, sense);
}

void Fin::destruct(Fin * fin)
{
    delete fin;
}

Fin::~Fin()
{
    leaveStore(&SubPool::m_Fins, this);
}

} // namespace transl_tk
