#ifndef KELD_TRANSL_PRODUCT_PROXY_HIERARCHY_H
#define KELD_TRANSL_PRODUCT_PROXY_HIERARCHY_H

#include "model/block_pool.h"
#include "product/hierarchy_ref.h"

#include <array>
#include <memory>

namespace transl_tk {

/// What all nodes of the product structure hold.
class ProxyHierarchy
{
public:
    ProxyHierarchy() = default;
    ProxyHierarchy(ProxyHierarchy const &) = delete;
    ProxyHierarchy & operator=(ProxyHierarchy const &) = delete;
    virtual ~ProxyHierarchy();

    void copyTransform(double * transform) const;
    void keepTransform(double const * transform);

    Assembly * parent() const noexcept { return m_Parent; }
    void keepParent(Assembly * parent) noexcept;

    /// The parent when it still stands in the model, else null.
    Assembly * livingParent() const;

private:
    struct Matrix : Pooled<Matrix>
    {
        std::array<double, 16> values;
    };

    /// Null for the identity, which is what most nodes have.
    std::unique_ptr<Matrix> m_Transform;
    Assembly * m_Parent = nullptr;
    int m_ParentId = 0; ///< tells whether the parent is still there
};

/// A `Public` class, such as `Instance`, with the operations that work on a `Hidden` one alone.
template <class Public, class Hidden> class HierarchyOf : public Public, protected Hidden
{
protected:
    explicit HierarchyOf(int id) : Public(id) {}
    HierarchyOf(int id, char const * name) : Public(id), Hidden(name) {}

public:
    int getEntityKind() override { return EntityKindHierarchy; }
    void getTransform(double * transform) override { this->copyTransform(transform); }
    void setTransform(double const * transform) override { this->keepTransform(transform); }
    transl_tk::Assembly * getParent() override { return this->parent(); }
    void setParent(transl_tk::Assembly * parent) override { this->keepParent(parent); }

    using Hidden::livingParent;

    /// Leaves the parent when there still is one; the pointer to it stays.
    void leaveParent()
    {
        if (transl_tk::Assembly * const parent = livingParent())
            parent->removeChild(this);
    }
};

} // namespace transl_tk

#endif
