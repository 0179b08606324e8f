#ifndef KELD_TRANSL_GEOM_BSPLINE_CURVE_H
#define KELD_TRANSL_GEOM_BSPLINE_CURVE_H

#include <keld-transl/geom/curve.h>

namespace geom {

/// A B-spline curve, rational when it has weights.
///
/// Knots are distinct values with multiplicities. The toolkit keeps and carries the two flags and
/// gives them no meaning.
class KELD_TRANSL_EXPORT BSplineCurve : public Curve
{
protected:
    BSplineCurve() = default;
    ~BSplineCurve() override = default;

public:
    BSplineCurve(BSplineCurve const &) = default;
    BSplineCurve & operator=(BSplineCurve const &) = default;

    /// `multiplicities` and `knots` hold `knotCount` values, `points` three for each of
    /// `pointCount` control points, and `weights`, which may be null, one for each.
    static BSplineCurve * create(int const & degree, bool const & flagA, bool const & flagB,
                                 int const & knotCount, int const * multiplicities,
                                 double const * knots, int const & pointCount,
                                 double const * points, double const * weights,
                                 Parameterization const & parameterization);

    virtual void getSplineForm(int & degree, bool & flagA, bool & flagB) = 0;

    virtual int getNumControlPoints() = 0;
    /// Fills three doubles for each control point.
    virtual void getControlPoints(double * points) = 0;
    /// Fills a double for each control point; nothing when the curve is not rational.
    virtual void getWeights(double * weights) = 0;

    virtual int getNumKnots() = 0;
    virtual void getKnots(double * knots, int * multiplicities) = 0;

    /// Whether the curve has weights.
    virtual bool isRational() = 0;

    /// Turns the direction of the curve. Each knot k becomes (last - first) - k, each parameter
    /// value t (last + first) - t: the parameterization keeps its range, knots that do not begin
    /// at 0 move. A single knot or parameter value stays.
    virtual void reverse() = 0;
};

} // namespace geom

#endif
