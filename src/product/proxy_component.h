#ifndef KELD_TRANSL_PRODUCT_PROXY_COMPONENT_H
#define KELD_TRANSL_PRODUCT_PROXY_COMPONENT_H

#include "product/hierarchy_list.h"
#include "product/proxy_hierarchy.h"

#include <string>

namespace transl_tk {

/// What assemblies and parts hold.
class ProxyComponent : public ProxyHierarchy
{
public:
    explicit ProxyComponent(char const * name);
    ~ProxyComponent() override;

    /// Frees the instances. Has to happen while the whole component still stands, since they leave
    /// it, and may leave it as a child as well.
    void endInstances();

    void adoptUnits(Units * units);
    void listInstance(Instance * instance);
    /// The same for an instance that nothing lists yet.
    void listNewInstance(Instance * instance);
    bool walkInstances(bool (*callback)(Instance *, void *), void * user) const;

    std::string m_Name;
    std::string m_FirstLabel;
    std::string m_SecondLabel;
    Units * m_Units;
    HierarchyList m_Instances; ///< the numbers are how often each was added
};

inline char const * textOrEmpty(char const * text)
{
    return text != nullptr ? text : "";
}

/// `Assembly` or `Part` with the operations of all components.
template <class Public> class ComponentOf : public HierarchyOf<Public, ProxyComponent>
{
protected:
    using HierarchyOf<Public, ProxyComponent>::HierarchyOf;

public:
    Units * getUnits() override { return this->m_Units; }
    void setUnits(Units * units) override { this->adoptUnits(units); }
    char const * getName() override { return this->m_Name.c_str(); }
    char const * getFirstLabel() override { return this->m_FirstLabel.c_str(); }
    void setFirstLabel(char const * label) override { this->m_FirstLabel = textOrEmpty(label); }
    char const * getSecondLabel() override { return this->m_SecondLabel.c_str(); }
    void setSecondLabel(char const * label) override { this->m_SecondLabel = textOrEmpty(label); }
    void addInstance(transl_tk::Instance * instance) override { this->listInstance(instance); }
    void removeInstance(transl_tk::Instance * instance) override
    {
        this->m_Instances.erase(instance);
    }
    bool forEachInstance(bool (*callback)(transl_tk::Instance *, void *), void * user) override
    {
        return this->walkInstances(callback, user);
    }

    using ProxyComponent::listNewInstance;
};

} // namespace transl_tk

#endif
