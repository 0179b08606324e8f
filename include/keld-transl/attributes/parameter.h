#ifndef KELD_TRANSL_ATTRIBUTES_PARAMETER_H
#define KELD_TRANSL_ATTRIBUTES_PARAMETER_H

#include <keld-transl/attributes/value.h>

namespace transl_tk {

/// A typed list of values on a `Leaf` of a parameter tree.
///
/// A parameter belongs to the leaf that it is added to, and to one leaf only; one that is held by
/// nobody is freed with `destruct`.
class KELD_TRANSL_EXPORT Parameter
{
protected:
    Parameter() = default;

public:
    /// What a parameter says. Translators define the numbers; each passes through unchanged.
    enum Param : int {};

    Parameter(Parameter const &) = delete;
    Parameter & operator=(Parameter const &) = delete;

    /// Make a parameter without values, with three values of type `double`, or with one value,
    /// which it adopts.
    static Parameter * create(Param const & param);
    static Parameter * create(Param const & param, double const & a, double const & b,
                              double const & c);
    static Parameter * create(Param const & param, IValue * value);

    /// Frees a parameter with its values; null is no fault.
    static void destruct(Parameter * parameter);

    virtual Param getParam() const = 0;

    /// Appends `value` and adopts it. A null value stands in the list like any other.
    virtual void addValue(IValue * value) = 0;

    virtual int getNumValues() const = 0;

    /// The value at `index`, which must exist. It stays owned by the parameter and may be null.
    virtual IValue * getValue(int const & index) const = 0;

protected:
    virtual ~Parameter() = default;
};

} // namespace transl_tk

#endif
