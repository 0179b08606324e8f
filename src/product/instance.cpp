#include "model/entity.h"
#include "product/proxy_instance.h"

namespace transl_tk {

ProxyInstance::~ProxyInstance()
{
    if (EndOfAllNodes::goesOn())
        return;
    HierarchyRef component;
    component.hierarchy = m_Component;
    component.id = m_ComponentId;
    if (Component * const living = component.livingComponent())
        living->removeInstance(this);
    leaveParent();
}

Instance * Instance::create(int const & id, Component * component)
{
    if (component == nullptr)
        return nullptr;
    return createEntity<ProxyInstance>(&SubPool::m_Hierarchies, id, component);
}

Instance::~Instance() = default;

} // namespace transl_tk
