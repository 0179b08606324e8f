#ifndef KELD_TRANSL_PRODUCT_COMPONENT_H
#define KELD_TRANSL_PRODUCT_COMPONENT_H

#include <keld-transl/product/hierarchy.h>
#include <keld-transl/product/units.h>

namespace transl_tk {

class Instance;

/// What instances can place: an assembly or a part. Texts that are null count as empty, and what a
/// getter returns is valid until the text is set again.
class KELD_TRANSL_EXPORT Component : public Hierarchy
{
protected:
    Component() = default;
    explicit Component(int const & id) : Hierarchy(id) {}
    ~Component() override;

public:
    Component(Component const &) = default;
    Component & operator=(Component const &) = default;

    /// The units, which stay the component's. At first millimetres, angular type 2, scales of 1.
    virtual Units * getUnits() = 0;
    /// Adopts `units` and frees those that were there. Null, and the units that are there, change
    /// nothing.
    virtual void setUnits(Units * units) = 0;

    /// The name, unique among the components of the sub-pool: it may differ from the one given to
    /// `create`.
    virtual char const * getName() = 0;

    /// Two texts that the toolkit passes on and draws no meaning from.
    virtual char const * getFirstLabel() = 0;
    virtual void setFirstLabel(char const * label) = 0;
    virtual char const * getSecondLabel() = 0;
    virtual void setSecondLabel(char const * label) = 0;

    /// Lists an instance of this component, as often as it is added. `Instance::create` does so.
    /// A component takes the instances that it lists along at its end.
    virtual void addInstance(transl_tk::Instance * instance) = 0;
    /// Removes all occurrences.
    virtual void removeInstance(transl_tk::Instance * instance) = 0;
    /// Calls `callback` for every instance, in no particular order. Stops at the first false and
    /// returns it. The callback may add, remove and free instances.
    virtual bool forEachInstance(bool (*callback)(transl_tk::Instance *, void *), void * user) = 0;
};

} // namespace transl_tk

#endif
