#ifndef KELD_STEP_IMPORT_SPLINE_ARRAYS_H
#define KELD_STEP_IMPORT_SPLINE_ARRAYS_H

#include <vector>

class Geom_BSplineCurve;
class Geom2d_BSplineCurve;
class Geom_BSplineSurface;

namespace step {

/// The distinct knots of one direction of a spline, with their multiplicities.
struct Knots
{
    int count() const { return static_cast<int>(values.size()); }

    std::vector<double> values;
    std::vector<int> multiplicities;
};

/// The arrays of a spline. Weights are there when it is rational.
struct SplineArrays
{
    double const * weightsOrNull() const { return weights.empty() ? nullptr : weights.data(); }

    std::vector<double> points;
    std::vector<double> weights;
};

Knots knotsOf(Geom_BSplineCurve const & curve);
Knots knotsOf(Geom2d_BSplineCurve const & curve);
Knots uKnotsOf(Geom_BSplineSurface const & surface);
Knots vKnotsOf(Geom_BSplineSurface const & surface);

SplineArrays arraysOf(Geom_BSplineCurve const & curve);
SplineArrays arraysOf(Geom2d_BSplineCurve const & curve);
/// v runs fastest.
SplineArrays arraysOf(Geom_BSplineSurface const & surface);

} // namespace step

#endif
