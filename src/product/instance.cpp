#include "model/entity.h"
#include "product/proxy_assembly.h"
#include "product/proxy_instance.h"
#include "product/proxy_part.h"

#include <typeinfo>

namespace transl_tk {

ProxyInstance::ProxyInstance(int id, Component * component)
    : HierarchyOf(id), m_Component(component), m_ComponentId(component->getId())
{
    // To add it the usual way, the component would look for it among all its instances.
    if (typeid(*component) == typeid(ProxyPart))
        static_cast<ProxyPart *>(component)->listNewInstance(this);
    else if (typeid(*component) == typeid(ProxyAssembly))
        static_cast<ProxyAssembly *>(component)->listNewInstance(this);
    else
        component->addInstance(this);
}

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
