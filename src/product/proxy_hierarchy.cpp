#include "product/proxy_hierarchy.h"

#include "product/proxy_component.h"

#include <keld-transl/product/part.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace transl_tk {

namespace {

constexpr std::array<double, 16> identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

} // namespace

ProxyHierarchy::~ProxyHierarchy() = default;

void ProxyHierarchy::copyTransform(double * transform) const
{
    std::memcpy(transform, m_Transform ? m_Transform->values.data() : identity.data(),
                sizeof(identity));
}

void ProxyHierarchy::keepTransform(double const * transform)
{
    // Bits, not numbers, are compared: a negative zero is to come out again as one.
    auto const sameBits = [](double a, double b) {
        return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
    };
    if (std::equal(identity.begin(), identity.end(), transform, sameBits)) {
        m_Transform.reset();
        return;
    }
    if (!m_Transform)
        m_Transform = std::make_unique<Matrix>();
    std::memcpy(m_Transform->values.data(), transform, sizeof(identity));
}

bool ProxyHierarchy::hasIdentity() const
{
    return !m_Transform || m_Transform->values == identity;
}

void ProxyHierarchy::keepParent(Assembly * parent) noexcept
{
    m_Parent = parent;
    m_ParentId = parent != nullptr ? parent->getId() : 0;
}

Assembly * ProxyHierarchy::livingParent() const
{
    HierarchyRef parent;
    parent.hierarchy = m_Parent;
    parent.id = m_ParentId;
    return parent.livingAssembly();
}

Assembly * livingParentOf(Hierarchy * node)
{
    // Only the hidden classes know the parent's id. A host's own class is trusted to keep a parent
    // that is there.
    if (node->getParent() == nullptr)
        return nullptr;
    if (auto * const instance = dynamic_cast<HierarchyOf<Instance, ProxyHierarchy> *>(node))
        return instance->livingParent();
    if (auto * const part = dynamic_cast<HierarchyOf<Part, ProxyComponent> *>(node))
        return part->livingParent();
    if (auto * const assembly = dynamic_cast<HierarchyOf<Assembly, ProxyComponent> *>(node))
        return assembly->livingParent();
    return node->getParent();
}

} // namespace transl_tk
