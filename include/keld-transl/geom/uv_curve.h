#ifndef KELD_TRANSL_GEOM_UV_CURVE_H
#define KELD_TRANSL_GEOM_UV_CURVE_H

#include <keld-transl/export.h>
#include <keld-transl/geom/trimming_points.h>

namespace geom {

/// A B-spline curve in the parameter space of a surface, rational when it has weights. It has no
/// parameterization and no size: nothing scales it. Else as `BSplineCurve`.
class KELD_TRANSL_EXPORT UVCurve
{
protected:
    UVCurve() = default;
    virtual ~UVCurve() = default;

public:
    /// A copy has the same trimming points, nothing else: the shape is not copied.
    UVCurve(UVCurve const &) = default;
    UVCurve & operator=(UVCurve const &) = default;

    /// Makes a curve that the caller owns. `multiplicities` and `knots` hold `knotCount` values,
    /// `points` two for each of `pointCount` control points, u and v, and `weights`, which may be
    /// null, one for each.
    ///
    /// A negative count is a std::length_error with "vector<T> too long".
    static UVCurve * create(int const & degree, bool const & flagA, bool const & flagB,
                            int const & knotCount, int const * multiplicities, double const * knots,
                            int const & pointCount, double const * points, double const * weights);

    /// Frees a curve together with its trimming points; null is no fault.
    static void destruct(UVCurve * curve);

    virtual void getSplineForm(int & degree, bool & flagA, bool & flagB) = 0;

    virtual int getNumControlPoints() = 0;
    /// Fills two doubles for each control point, u and v.
    virtual void getControlPoints(double * points) = 0;
    /// Fills a double for each control point; nothing when the curve is not rational.
    virtual void getWeights(double * weights) = 0;

    virtual int getNumKnots() = 0;
    virtual void getKnots(double * knots, int * multiplicities) = 0;

    /// Whether the curve has weights.
    virtual bool isRational() = 0;

    /// Turns the direction of the curve; see `BSplineCurve::reverse`.
    virtual void reverse() = 0;

    /// What was set last, null at first. The curve owns it: `destruct` frees it.
    virtual trimmingPoints * getTrimPoints() const;

    /// Takes over `points`. What was set before is not freed: it is the caller's from then on.
    virtual void setTrimPoints(trimmingPoints * points);

private:
    trimmingPoints * m_TrimPoints = nullptr;
};

} // namespace geom

#endif
