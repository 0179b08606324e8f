#ifndef KELD_TRANSL_GEOM_SPLINE_CURVE_H
#define KELD_TRANSL_GEOM_SPLINE_CURVE_H

#include "geom/spline_data.h"

#include <algorithm>
#include <utility>

namespace geom {

/// The half of a hidden class that the spline curves in space and in parameter space share.
template <class Base, std::size_t Dimension> class SplineCurve : public Base
{
public:
    template <class... Parameterizations>
    explicit SplineCurve(SplineData<Dimension> data, Parameterizations &&... parameterizations)
        : Base(std::forward<Parameterizations>(parameterizations)...), m_Data(std::move(data))
    {}

    SplineData<Dimension> const & data() const { return m_Data; }

    void getSplineForm(int & degree, bool & flagA, bool & flagB) final
    {
        m_Data.form.get(degree, flagA, flagB);
    }
    int getNumControlPoints() final { return static_cast<int>(m_Data.points.size()); }
    void getControlPoints(double * points) final { m_Data.points.copyTo(points); }
    void getWeights(double * weights) final { m_Data.weights.copyTo(weights); }
    int getNumKnots() final { return static_cast<int>(m_Data.form.knots.size()); }
    void getKnots(double * knots, int * multiplicities) final
    {
        m_Data.form.knots.copyTo(knots, multiplicities);
    }
    bool isRational() final { return !m_Data.weights.empty(); }

    void reverse() override
    {
        m_Data.form.knots.reverse();
        std::reverse(m_Data.points.begin(), m_Data.points.end());
        std::reverse(m_Data.weights.begin(), m_Data.weights.end());
    }

protected:
    SplineData<Dimension> m_Data;
};

/// Spline data with copies of a caller's arrays; `weights` may be null.
template <std::size_t Dimension>
SplineData<Dimension> copiedSpline(SplineForm form, int pointCount, double const * points,
                                   double const * weights)
{
    using Point = typename SplineData<Dimension>::Point;
    return {std::move(form), copiedArray<Point>(points, pointCount),
            copiedWeights(weights, pointCount)};
}

} // namespace geom

#endif
