#include "product/hierarchy_ref.h"

#include "model/entity.h"

#include <utility>

namespace transl_tk {

Hierarchy * HierarchyRef::living() const noexcept
{
    if (hierarchy == nullptr)
        return nullptr;
    return CurrentSubPool::holds(&SubPool::m_Hierarchies, id, hierarchy) ? hierarchy : nullptr;
}

Assembly * HierarchyRef::livingAssembly() const
{
    Hierarchy * const node = living();
    bool const fits = node != nullptr && node->getHierarchyType() == Hierarchy::Assembly;
    return fits ? static_cast<Assembly *>(node) : nullptr;
}

Component * HierarchyRef::livingComponent() const
{
    Hierarchy * const node = living();
    bool const fits = node != nullptr && node->getHierarchyType() != Hierarchy::Instance;
    return fits ? static_cast<Component *>(node) : nullptr;
}

Instance * HierarchyRef::livingInstance() const
{
    Hierarchy * const node = living();
    bool const fits = node != nullptr && node->getHierarchyType() == Hierarchy::Instance;
    return fits ? static_cast<Instance *>(node) : nullptr;
}

std::size_t HierarchyWalk::s_Ends = 0;

HierarchyWalk::HierarchyWalk(std::vector<HierarchyRef> nodes)
    : m_Nodes(std::move(nodes)), m_Ends(s_Ends)
{}

Hierarchy * HierarchyWalk::next() noexcept
{
    while (m_Next < m_Nodes.size()) {
        HierarchyRef const & node = m_Nodes[m_Next++];
        if (m_Ends == s_Ends || node.living() != nullptr)
            return node.hierarchy;
    }
    return nullptr;
}

} // namespace transl_tk
