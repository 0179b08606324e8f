#ifndef KELD_TRANSL_PRODUCT_PROXY_INSTANCE_H
#define KELD_TRANSL_PRODUCT_PROXY_INSTANCE_H

#include "product/proxy_hierarchy.h"

#include <keld-transl/product/instance.h>

namespace transl_tk {

class ProxyInstance final : public HierarchyOf<Instance, ProxyHierarchy>,
                            public Pooled<ProxyInstance>
{
public:
    ProxyInstance(int id, Component * component);
    ProxyInstance(ProxyInstance const &) = delete;
    ProxyInstance & operator=(ProxyInstance const &) = delete;
    ~ProxyInstance() override;

    Type getHierarchyType() override { return Hierarchy::Instance; }
    Component * getComponent() override { return m_Component; }
    int componentId() const { return m_ComponentId; }

private:
    Component * m_Component;
    int m_ComponentId; ///< tells whether the component is still there
};

} // namespace transl_tk

#endif
