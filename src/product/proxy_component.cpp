#include "product/proxy_component.h"

#include "model/entity.h"

namespace transl_tk {

namespace {

constexpr Units::AngularType initialAngularType{2};

} // namespace

ProxyComponent::ProxyComponent(char const * name)
    : m_Name(textOrEmpty(name)),
      m_Units(Units::create(Units::Millimetre, initialAngularType, 1.0, 1.0))
{
    try {
        CurrentSubPool::get()->uniqueName(m_Name);
    } catch (...) {
        Units::destruct(m_Units);
        throw;
    }
}

ProxyComponent::~ProxyComponent()
{
    Units::destruct(m_Units);
    if (SubPool * const subPool = CurrentSubPool::get())
        subPool->eraseName(m_Name);
}

void ProxyComponent::endInstances()
{
    if (EndOfAllNodes::goesOn())
        return;
    for (HierarchyRef const & instance : m_Instances.entries())
        Hierarchy::destruct(instance.livingInstance());
}

void ProxyComponent::adoptUnits(Units * units)
{
    if (units == nullptr || units == m_Units)
        return;
    Units::destruct(m_Units);
    m_Units = units;
}

void ProxyComponent::listInstance(Instance * instance)
{
    if (instance == nullptr)
        return;
    if (HierarchyList::Entry * const entry = m_Instances.find(instance))
        ++entry->number;
    else
        m_Instances.insert(instance, 1);
}

void ProxyComponent::listNewInstance(Instance * instance)
{
    m_Instances.append(instance, 1);
}

bool ProxyComponent::walkInstances(bool (*callback)(Instance *, void *), void * user) const
{
    std::vector<HierarchyRef> nodes;
    for (HierarchyList::Entry const & entry : m_Instances.entries())
        nodes.insert(nodes.end(), static_cast<std::size_t>(entry.number), entry);
    HierarchyWalk walk(std::move(nodes));
    while (Hierarchy * const node = walk.next())
        if (!callback(static_cast<Instance *>(node), user))
            return false;
    return true;
}

} // namespace transl_tk
