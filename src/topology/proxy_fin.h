#ifndef KELD_TRANSL_TOPOLOGY_PROXY_FIN_H
#define KELD_TRANSL_TOPOLOGY_PROXY_FIN_H

#include "model/carrier.h"

#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/fin.h>

namespace transl_tk {

class ProxyFin final : public Fin, public Pooled<ProxyFin>
{
public:
    ProxyFin(int id, Edge * edge, bool sense);
    ProxyFin(ProxyFin const &) = delete;
    ProxyFin & operator=(ProxyFin const &) = delete;
    ~ProxyFin() override;

    int getEntityKind() override { return EntityKindFin; }

    Edge * getEdge() override { return m_Edge.get(); }
    bool getSense() override { return m_Sense; }
    void setUVCurve(UVCurve * curve) override { m_UVCurve = curve; }
    UVCurve * getUVCurve() override { return m_UVCurve; }

    /// Id of the edge, -1 when there is none or it has died.
    int edgeId() const { return m_Edge.livingId(); }

    /// Lets go of everything and frees nothing but itself.
    void destroyAlone();

private:
    using EdgeLink = CarrierLink<Edge, &SubPool::m_Edges>;

    UVCurve * m_UVCurve = nullptr; ///< owned
    EdgeLink m_Edge;
    bool m_Sense;
};

} // namespace transl_tk

#endif
