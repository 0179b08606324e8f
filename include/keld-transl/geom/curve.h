#ifndef KELD_TRANSL_GEOM_CURVE_H
#define KELD_TRANSL_GEOM_CURVE_H

#include <keld-transl/export.h>
#include <keld-transl/geom/parameterization.h>
#include <keld-transl/geom/trimming_points.h>

namespace geom {

/// Base of all exact curves in space.
///
/// Every kind X is made by a static `X::create` and freed by `Curve::destruct`; the caller owns it
/// until somebody adopts it, such as an entity or a surface. Curves are data that nothing in the
/// toolkit evaluates: no `create` looks at what the values mean, and all of them are kept bit for
/// bit. Arrays and parameterizations are copied. A negative count is a std::length_error with
/// "vector<T> too long".
///
/// Getters that fill an array need room for all that there is to fill.
///
/// A curve belongs to one thread at a time.
class KELD_TRANSL_EXPORT Curve
{
protected:
    Curve() = default;
    virtual ~Curve();

public:
    /// The kinds of curves. The numbers also lead the curves' records in the model stream.
    enum Type : int {
        Circle = 1,
        BSplineCurve = 2,
        Ellipse = 3,
        Line = 5,
        LineStrip = 6,
        CompositeCurve = 7
    };

    /// A copy has the same trimming points, nothing else: the shape is not copied.
    Curve(Curve const &) = default;
    Curve & operator=(Curve const &) = default;

    /// Frees a curve together with its trimming points; null is no fault.
    static void destruct(Curve * curve);

    /// Scales a curve in place about a centre that stays where it is: positions are moved away
    /// from it by `factor`, radii grow by it. Directions, axes, angles, knots, weights,
    /// parameterizations and trimming points stay, and so do line strips and composites
    /// altogether. `factor` may be anything, 0 and negative numbers included.
    ///
    /// A position p becomes (p - centre) * factor + centre, each step rounded to a double.
    static void scale(Curve * curve, double const & factor, double const & centreX,
                      double const & centreY, double const & centreZ);

    /// The curve's own parameterization, valid as long as the curve.
    virtual Parameterization const & getParameterization() = 0;

    virtual Type getType() = 0;

    /// What was set last, null at first. The curve owns it: `destruct` frees it.
    virtual trimmingPoints * getTrimPoints() const;

    /// Takes over `points`. What was set before is not freed: it is the caller's from then on.
    virtual void setTrimPoints(trimmingPoints * points);

private:
    trimmingPoints * m_TrimPoints = nullptr;
};

} // namespace geom

#endif
