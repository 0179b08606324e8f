#ifndef KELD_TRANSL_GEOM_PARAMETERIZATION_H
#define KELD_TRANSL_GEOM_PARAMETERIZATION_H

#include <keld-transl/export.h>

#include <vector>

namespace geom {

/// How a list of parameter values came about. Any number can be stored and travels as it is.
enum ParamForm : int {
    SteppedA = 0,
    SteppedB = 1, ///< built as `SteppedA`; the translators tell the two apart
    Angular = 2   ///< the multiples of a quarter of pi
};

/// The parameter values that a translator attached to a curve, or to one direction of a surface.
/// Nothing in the toolkit interprets them.
class KELD_TRANSL_EXPORT Parameterization
{
public:
    /// No values, and the form 0.
    Parameterization() = default;

    /// A list by its form.
    ///
    /// `SteppedA` and `SteppedB`: `count` values that begin with `start` and grow by `step`, the
    /// last of them replaced by `end`. A `count` of 0 gives no values.
    /// `Angular`: the nine multiples of a quarter of pi from 0 to two pi, in radians; the other
    /// arguments are ignored.
    /// Any other form: no values, and the form 0.
    ///
    /// std::length_error with "vector<T> too long" when no array can hold `count` values.
    Parameterization(ParamForm const & form, double const & start, double const & end,
                     unsigned int const & count, double const & step);

    Parameterization(Parameterization const &) = default;
    /// Takes the values over; `other` keeps its form.
    Parameterization(Parameterization && other) noexcept = default;
    Parameterization & operator=(Parameterization const &) = default;
    /// Takes the values over; `other` keeps its form. Moving to itself changes nothing.
    Parameterization & operator=(Parameterization && other) noexcept;
    ~Parameterization() = default;

    std::vector<double> m_Values;
    ParamForm m_Form = SteppedA;
};

} // namespace geom

#endif
