#include "topology/proxy_edge.h"

namespace transl_tk {

ProxyEdge::ProxyEdge(int id, Curve3D * curve, Vertex * start, Vertex * end, bool sense)
    : Edge(id), m_Curve(curve, this), m_Start(start, this),
      m_End(start == end ? m_Start : VertexLink(end, this)), m_Sense(sense)
{}

ProxyEdge::~ProxyEdge()
{
    m_Curve.release(this);
    m_Start.release(this);
    if (m_End != m_Start)
        m_End.release(this);
}

void ProxyEdge::setCurve(Curve3D * curve)
{
    m_Curve.leave(this);
    m_Curve = CurveLink(curve, this);
}

void ProxyEdge::setStartVertex(Vertex * vertex)
{
    m_Start.leave(this);
    m_Start = VertexLink(vertex, this);
}

void ProxyEdge::setEndVertex(Vertex * vertex)
{
    m_End.leave(this);
    m_End = VertexLink(vertex, this);
}

void ProxyEdge::destroyAlone()
{
    setCurve(nullptr);
    setStartVertex(nullptr);
    setEndVertex(nullptr);
    delete this;
}

Edge * Edge::create(int const & id, Curve3D * curve, Vertex * start, Vertex * end,
                    bool const & sense)
{
    return createCarrier<ProxyEdge>(&SubPool::m_Edges, id, curve, start, end, sense);
}

void Edge::destruct(Edge * edge)
{
    delete edge;
}

Edge::~Edge()
{
    leaveStore(&SubPool::m_Edges, this);
}

} // namespace transl_tk
