#include "model/entity.h"
#include "product/proxy_hierarchy.h"

#include <keld-transl/product/instance.h>

namespace transl_tk {

namespace {

class ProxyInstance final : public HierarchyOf<Instance, ProxyHierarchy>,
                            public Pooled<ProxyInstance>
{
public:
    ProxyInstance(int id, Component * component)
        : HierarchyOf(id), m_Component(component), m_ComponentId(component->getId())
    {
        component->addInstance(this);
    }
    ProxyInstance(ProxyInstance const &) = delete;
    ProxyInstance & operator=(ProxyInstance const &) = delete;
    ~ProxyInstance() override;

    Type getHierarchyType() override { return Hierarchy::Instance; }
    Component * getComponent() override { return m_Component; }

private:
    Component * m_Component;
    int m_ComponentId; ///< tells whether the component is still there
};

ProxyInstance::~ProxyInstance()
{
    HierarchyRef component;
    component.hierarchy = m_Component;
    component.id = m_ComponentId;
    if (Component * const living = component.livingComponent())
        living->removeInstance(this);
    leaveParent();
}

} // namespace

Instance * Instance::create(int const & id, Component * component)
{
    if (component == nullptr)
        return nullptr;
    return createEntity<ProxyInstance>(&SubPool::m_Hierarchies, id, component);
}

Instance::~Instance() = default;

} // namespace transl_tk
