#ifndef KELD_TRANSL_PRODUCT_ASSEMBLY_H
#define KELD_TRANSL_PRODUCT_ASSEMBLY_H

#include <keld-transl/product/component.h>

namespace transl_tk {

/// A group of assemblies, parts and instances, which it owns.
class KELD_TRANSL_EXPORT Assembly : public Component
{
protected:
    Assembly() = default;
    explicit Assembly(int const & id) : Component(id) {}
    ~Assembly() override;

public:
    Assembly(Assembly const &) = default;
    Assembly & operator=(Assembly const &) = default;

    /// Makes an assembly of the current sub-pool, without children. The name is made unique; null
    /// counts as empty. Null when `id` is taken; see `Base` for the rules of ids.
    static Assembly * create(int const & id, char const * name);

    /// Takes `child` out of its parent and in here, with the number of children that there are as
    /// its order number. Null is passed over.
    virtual void addChild(Hierarchy * child) = 0;
    /// Drops `child`, which keeps its parent pointer; the other children keep their numbers.
    virtual void removeChild(Hierarchy * child) = 0;
    /// Calls `callback` for the children in ascending order of their numbers, which is the order of
    /// adding. Stops at the first false and returns it. Of two children with one number, as adding
    /// after a removal leaves behind, only the first is visited. The walk goes over a copy: the
    /// callback may add, remove and free children.
    virtual bool forEachChild(bool (*callback)(Hierarchy *, void *), void * user) = 0;

    /// Whether this is the assembly with an empty name that `getTopAssembly` makes: of id -1 and
    /// without a name.
    virtual bool isSynthetic() = 0;
};

} // namespace transl_tk

#endif
