#include "product/proxy_part.h"

namespace transl_tk {

ProxyPart::~ProxyPart()
{
    leaveParent();
    keepParent(nullptr);
    NodeTree::destruct(m_NodeTree);
    m_Bodies.destroy(&SubPool::m_Bodies);
    m_Points.destroy(&SubPool::m_Points);
    m_SpotWelds.destroy(&SubPool::m_SpotWelds);
    m_TriStrips.destroy(&SubPool::m_TriStrips);
    m_Curves.destroy(&SubPool::m_Curves3D);
    m_CartesianCoords.destroy(&SubPool::m_CartesianCoords);
    m_Annotations.destroy(&SubPool::m_Annotations);
    endInstances();
}

void ProxyPart::destroyAlone()
{
    m_Bodies.forget();
    m_Points.forget();
    m_SpotWelds.forget();
    m_TriStrips.forget();
    m_Curves.forget();
    m_CartesianCoords.forget();
    m_Annotations.forget();
    delete this;
}

Part * Part::create(int const & id, char const * name)
{
    return createEntity<ProxyPart>(&SubPool::m_Hierarchies, id, name);
}

Part::~Part() = default;

} // namespace transl_tk
