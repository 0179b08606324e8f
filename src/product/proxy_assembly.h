#ifndef KELD_TRANSL_PRODUCT_PROXY_ASSEMBLY_H
#define KELD_TRANSL_PRODUCT_PROXY_ASSEMBLY_H

#include "product/proxy_component.h"

#include <keld-transl/product/assembly.h>

namespace transl_tk {

class ProxyAssembly final : public ComponentOf<Assembly>, public Pooled<ProxyAssembly>
{
public:
    ProxyAssembly(int id, char const * name) : ComponentOf(id, name) {}
    ProxyAssembly(ProxyAssembly const &) = delete;
    ProxyAssembly & operator=(ProxyAssembly const &) = delete;
    /// Frees the children, which are instances by then, and the instances of this assembly.
    ~ProxyAssembly() override;

    /// First step of the end: leaves the parent. False when it has been taken before, as happens to
    /// an assembly that is its own descendant.
    bool beginEnd();
    /// Second step: hands over all children but the instances. They are to be freed before this is.
    std::vector<HierarchyRef> takeComponents();

    Type getHierarchyType() override { return Hierarchy::Assembly; }
    void addChild(Hierarchy * child) override;
    void removeChild(Hierarchy * child) override;
    bool forEachChild(bool (*callback)(Hierarchy *, void *), void * user) override;
    bool isSynthetic() override;

private:
    HierarchyList m_Children;
    bool m_Ending = false;
};

} // namespace transl_tk

#endif
