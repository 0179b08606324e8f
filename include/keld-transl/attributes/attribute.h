#ifndef KELD_TRANSL_ATTRIBUTES_ATTRIBUTE_H
#define KELD_TRANSL_ATTRIBUTES_ATTRIBUTE_H

#include <keld-transl/attributes/value.h>

namespace transl_tk {

class Base;

/// A named, typed list of values that hangs on any number of entities: a colour, product data, a
/// comment, whatever stands beside the geometry.
///
/// An attribute knows its entities; no entity knows its attributes. It is no entity itself: it
/// stands in the list `m_Attributes` of its `SubPool`, which owns it, and travels with the model.
/// Attributes belong to one thread at a time, together with the whole model.
class KELD_TRANSL_EXPORT Attribute
{
protected:
    Attribute() = default;
    virtual ~Attribute() = default;

public:
    /// Translators give the numbers their meaning, and every number passes through unchanged. Named
    /// are those that the toolkit itself acts on.
    enum Type : int {
        Product = 2,    ///< product data of a hierarchy
        Comment = 7,    ///< becomes a line of text
        Dictionary = 14 ///< the metadata of the model; has an empty name
    };

    Attribute(Attribute const &) = delete;
    Attribute & operator=(Attribute const &) = delete;

    /// Makes an attribute without values and entities at the end of the current sub-pool's list.
    /// Null when `name`, which is copied, is null, or when there is no current sub-pool.
    static Attribute * create(char const * name, Type const & type);

    /// Frees the attribute with its values, and takes it out of the list of the current sub-pool
    /// or, when it is not there, of any other. The entities stay. Null is no fault.
    static void destruct(Attribute * attribute);

    /// Appends `value` and adopts it. A null value stands in the list like any other.
    virtual void addValue(IValue * value) = 0;

    /// Append a new value of that content. A null text appends nothing.
    virtual void addValue(unsigned char const & value) = 0;
    virtual void addValue(double const & value) = 0;
    virtual void addValue(float const & value) = 0;
    virtual void addValue(bool const & value) = 0;
    virtual void addValue(int const & value) = 0;
    virtual void addValue(char const * value) = 0;

    virtual Type getType() const = 0;
    virtual char const * getName() const = 0;
    virtual int getNumValues() const = 0;

    /// The value at `index`, which must exist. It stays owned by the attribute and may be null.
    virtual IValue * getValue(int const & index) const = 0;

    /// Hangs the attribute on `entity`, which must live. One that is added twice stands twice; null
    /// adds nothing.
    virtual void addEntity(Base * entity) = 0;

    /// Removes every occurrence of `entity`, which need not live any more.
    virtual void removeEntity(Base * entity) = 0;

    /// Calls `callback` for each entity, in no order to rely on. Stops at the first false and
    /// returns false; otherwise true. Entities that have died since, and those that the current
    /// sub-pool does not list, are passed over. The callback may add and remove entities of this
    /// attribute; those, and the neighbours of removed ones, may then be visited or not.
    virtual bool forEachEntity(bool (*callback)(Base * entity, void * user), void * user) = 0;

    /// Reads the values as a colour: the first four of type `unsigned char` are the components, and
    /// other types do not count. Missing ones are 0, but for the fourth, which is 100.
    void getColor(unsigned char (&colour)[4]);

private:
    friend struct AttributeAccess;
};

} // namespace transl_tk

#endif
