#ifndef KELD_TRANSL_TOPOLOGY_PROXY_EDGE_H
#define KELD_TRANSL_TOPOLOGY_PROXY_EDGE_H

#include "model/carrier.h"

#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/vertex.h>

namespace transl_tk {

class ProxyEdge final : public Edge, public Pooled<ProxyEdge>
{
public:
    ProxyEdge(int id, Curve3D * curve, Vertex * start, Vertex * end, bool sense);
    ProxyEdge(ProxyEdge const &) = delete;
    ProxyEdge & operator=(ProxyEdge const &) = delete;
    ~ProxyEdge() override;

    int getEntityKind() override { return EntityKindEdge; }

    Curve3D * getCurve() override { return m_Curve.get(); }
    void setCurve(Curve3D * curve) override;
    Vertex * getStartVertex() override { return m_Start.get(); }
    void setStartVertex(Vertex * vertex) override;
    Vertex * getEndVertex() override { return m_End.get(); }
    void setEndVertex(Vertex * vertex) override;
    bool getSense() override { return m_Sense; }

    /// Ids of what the edge shares, -1 for what is not there or has died.
    int curveId() const { return m_Curve.livingId(); }
    int startId() const { return m_Start.livingId(); }
    int endId() const { return m_End.livingId(); }

    /// Lets go of everything and frees nothing but itself.
    void destroyAlone();

private:
    using CurveLink = CarrierLink<Curve3D, &SubPool::m_Curves3D>;
    using VertexLink = CarrierLink<Vertex, &SubPool::m_Vertices>;

    CurveLink m_Curve;
    VertexLink m_Start;
    VertexLink m_End;
    bool m_Sense;
};

} // namespace transl_tk

#endif
