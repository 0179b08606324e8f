#include "model/entity.h"
#include "product/proxy_assembly.h"

namespace transl_tk {

ProxyAssembly::~ProxyAssembly()
{
    // All of them are instances, which have gone already when every node goes.
    if (EndOfAllNodes::goesOn())
        return;
    for (HierarchyRef const & child : m_Children.entries())
        Hierarchy::destruct(child.living());
    endInstances();
}

bool ProxyAssembly::beginEnd()
{
    if (m_Ending)
        return false;
    m_Ending = true;
    leaveParent();
    keepParent(nullptr);
    return true;
}

std::vector<HierarchyRef> ProxyAssembly::takeComponents()
{
    std::vector<HierarchyRef> taken;
    for (HierarchyRef const & child : m_Children.entries()) {
        Hierarchy * const living = child.living();
        if (living != nullptr && living->getHierarchyType() == Hierarchy::Instance)
            continue;
        if (living == nullptr && EndOfAllNodes::goesOn())
            continue;
        m_Children.erase(child.hierarchy);
        if (living != nullptr)
            taken.push_back(child);
    }
    return taken;
}

void ProxyAssembly::addChild(Hierarchy * child)
{
    if (child == nullptr)
        return;
    if (transl_tk::Assembly * const parent = livingParentOf(child))
        parent->removeChild(child);
    m_Children.insert(child, m_Children.size());
    child->setParent(this);
}

void ProxyAssembly::removeChild(Hierarchy * child)
{
    m_Children.erase(child);
}

bool ProxyAssembly::forEachChild(bool (*callback)(Hierarchy *, void *), void * user)
{
    HierarchyWalk walk(m_Children.byNumber());
    while (Hierarchy * const child = walk.next())
        if (!callback(child, user))
            return false;
    return true;
}

bool ProxyAssembly::isSynthetic()
{
    return getId() == -1 && m_Name.empty();
}

Assembly * Assembly::create(int const & id, char const * name)
{
    return createEntity<ProxyAssembly>(&SubPool::m_Hierarchies, id, name);
}

Assembly::~Assembly() = default;

} // namespace transl_tk
