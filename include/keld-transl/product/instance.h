#ifndef KELD_TRANSL_PRODUCT_INSTANCE_H
#define KELD_TRANSL_PRODUCT_INSTANCE_H

#include <keld-transl/product/component.h>

namespace transl_tk {

/// One placement of a component.
class KELD_TRANSL_EXPORT Instance : public Hierarchy
{
protected:
    Instance() = default;
    explicit Instance(int const & id) : Hierarchy(id) {}
    ~Instance() override;

public:
    Instance(Instance const &) = default;
    Instance & operator=(Instance const &) = default;

    /// Makes an instance of the current sub-pool and lists it at `component`, which it goes away
    /// with. Null when `component` is null or `id` is taken; see `Base` for the rules of ids.
    static Instance * create(int const & id, Component * component);

    virtual Component * getComponent() = 0;
};

} // namespace transl_tk

#endif
