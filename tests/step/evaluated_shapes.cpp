#include "step/evaluated_shapes.h"

#include <keld-transl/geom/bspline_curve.h>
#include <keld-transl/geom/bspline_surface.h>
#include <keld-transl/geom/circle.h>
#include <keld-transl/geom/cone.h>
#include <keld-transl/geom/cylinder.h>
#include <keld-transl/geom/ellipse.h>
#include <keld-transl/geom/line.h>
#include <keld-transl/geom/offset_surface.h>
#include <keld-transl/geom/plane.h>
#include <keld-transl/geom/sphere.h>
#include <keld-transl/geom/surface_of_linear_extrusion.h>
#include <keld-transl/geom/surface_of_revolution.h>
#include <keld-transl/geom/torus.h>
#include <keld-transl/geom/uv_curve.h>

#include <cmath>
#include <gp_XYZ.hxx>
#include <stdexcept>
#include <vector>

namespace tests {

namespace {

gp_XYZ xyz(double const (&values)[3])
{
    return {values[0], values[1], values[2]};
}

/// Location and axes of a shape on a placement.
struct Axes
{
    template <class Shape> explicit Axes(Shape & shape)
    {
        double origin[3];
        double first[3];
        double second[3];
        double third[3];
        shape.getPlacement(origin, first, second, third);
        location = xyz(origin);
        x = xyz(first);
        y = xyz(second);
        z = xyz(third);
    }

    /// The point at an angle about the third axis.
    gp_XYZ at(double angle, double radius, double height) const
    {
        return location + x * (radius * std::cos(angle)) + y * (radius * std::sin(angle)) +
               z * height;
    }

    gp_XYZ location, x, y, z;
};

/// One direction of a spline: its degree and all its knots, each as often as it counts. Those of a
/// periodic one go on before its start and behind its end.
class Basis
{
public:
    Basis(int degree, bool periodic, std::vector<double> const & values,
          std::vector<int> const & multiplicities)
        : m_Degree(degree)
    {
        for (std::size_t i = 0; i < values.size(); ++i)
            m_Knots.insert(m_Knots.end(), static_cast<std::size_t>(multiplicities[i]), values[i]);
        m_First = values.front();
        m_Last = values.back();
        if (!periodic)
            return;
        double const period = m_Last - m_First;
        std::vector<double> const once(m_Knots.begin(), m_Knots.end() - multiplicities.back());
        std::vector<double> knots;
        for (int turn = -degree - 1; turn <= degree + 1; ++turn) {
            for (double const knot : once)
                knots.push_back(knot + turn * period);
        }
        // The first control point belongs to the knots that begin `degree` before the last copy of
        // the first knot.
        auto const lastCopy = once.size() * static_cast<std::size_t>(degree + 1) +
                              static_cast<std::size_t>(multiplicities.front()) - 1;
        m_Knots.assign(knots.begin() + static_cast<std::ptrdiff_t>(lastCopy) - degree, knots.end());
    }

    /// The weight of each of `count` control points at a parameter.
    std::vector<double> at(double parameter, int count) const
    {
        // The last parameter belongs to the stretch before it.
        std::size_t stretch = 0;
        for (std::size_t i = 0; i + 1 < m_Knots.size(); ++i) {
            bool const isHere = m_Knots[i] <= parameter && parameter < m_Knots[i + 1];
            bool const isEnd =
                m_Knots[i] < m_Knots[i + 1] && m_Knots[i + 1] == m_Last && parameter >= m_Last;
            if (isHere || isEnd) {
                stretch = i;
                if (isEnd)
                    break;
            }
        }
        std::vector<double> result(static_cast<std::size_t>(count));
        for (std::size_t i = 0; i + static_cast<std::size_t>(m_Degree) + 1 < m_Knots.size(); ++i)
            result[i % static_cast<std::size_t>(count)] += value(i, m_Degree, parameter, stretch);
        return result;
    }

private:
    double value(std::size_t i, int degree, double parameter, std::size_t stretch) const
    {
        if (degree == 0)
            return i == stretch ? 1 : 0;
        auto const d = static_cast<std::size_t>(degree);
        double result = 0;
        if (m_Knots[i + d] > m_Knots[i])
            result += (parameter - m_Knots[i]) / (m_Knots[i + d] - m_Knots[i]) *
                      value(i, degree - 1, parameter, stretch);
        if (m_Knots[i + d + 1] > m_Knots[i + 1])
            result += (m_Knots[i + d + 1] - parameter) / (m_Knots[i + d + 1] - m_Knots[i + 1]) *
                      value(i + 1, degree - 1, parameter, stretch);
        return result;
    }

    int m_Degree;
    std::vector<double> m_Knots;
    double m_First = 0;
    double m_Last = 0;
};

/// `get(values, multiplicities)` fills both.
template <class Get> Basis basisOf(int degree, bool periodic, int count, Get && get)
{
    std::vector<double> values(static_cast<std::size_t>(count));
    std::vector<int> multiplicities(static_cast<std::size_t>(count));
    get(values.data(), multiplicities.data());
    return {degree, periodic, values, multiplicities};
}

/// The mean of points of `Dimension` coordinates by two weights each.
template <int Dimension>
std::vector<double> mean(std::vector<double> const & points, std::vector<double> const & weights,
                         std::vector<double> const & shares)
{
    std::vector<double> sum(Dimension);
    double all = 0;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        double const share = shares[i] * weights[i];
        all += share;
        for (std::size_t k = 0; k < Dimension; ++k)
            sum[k] += share * points[Dimension * i + k];
    }
    for (double & coordinate : sum)
        coordinate /= all;
    return sum;
}

template <int Dimension, class Spline>
std::vector<double> splinePoint(Spline & spline, double parameter)
{
    int degree = 0;
    bool periodic = false;
    bool closed = false;
    spline.getSplineForm(degree, periodic, closed);
    Basis const basis =
        basisOf(degree, periodic, spline.getNumKnots(), [&](double * values, int * multiplicities) {
            spline.getKnots(values, multiplicities);
        });
    auto const count = static_cast<std::size_t>(spline.getNumControlPoints());
    std::vector<double> points(Dimension * count);
    std::vector<double> weights(count, 1.0);
    spline.getControlPoints(points.data());
    if (spline.isRational())
        spline.getWeights(weights.data());
    return mean<Dimension>(points, weights, basis.at(parameter, static_cast<int>(count)));
}

gp_Pnt splinePoint(geom::BSplineSurface & spline, double u, double v)
{
    int uDegree = 0;
    int vDegree = 0;
    bool uPeriodic = false;
    bool vPeriodic = false;
    bool closed = false;
    spline.getSplineFormU(uDegree, uPeriodic, closed);
    spline.getSplineFormV(vDegree, vPeriodic, closed);
    Basis const uBasis =
        basisOf(uDegree, uPeriodic, spline.getNumKnotsU(),
                [&](double * values, int * counts) { spline.getKnotsU(values, counts); });
    Basis const vBasis =
        basisOf(vDegree, vPeriodic, spline.getNumKnotsV(),
                [&](double * values, int * counts) { spline.getKnotsV(values, counts); });
    auto const uShares = uBasis.at(u, spline.getNumControlPointsU());
    auto const vShares = vBasis.at(v, spline.getNumControlPointsV());
    std::vector<double> shares;
    for (double const uShare : uShares) {
        for (double const vShare : vShares)
            shares.push_back(uShare * vShare);
    }
    std::vector<double> points(3 * shares.size());
    std::vector<double> weights(shares.size(), 1.0);
    spline.getControlPoints(points.data());
    if (spline.isRational())
        spline.getWeights(weights.data());
    auto const point = mean<3>(points, weights, shares);
    return {point[0], point[1], point[2]};
}

gp_Pnt turned(gp_Pnt const & point, geom::SurfaceOfRevolution & surface, double angle)
{
    double location[3];
    double direction[3];
    surface.getAxisPoint(location);
    surface.getAxisDirection(direction);
    gp_XYZ const axis = xyz(direction);
    gp_XYZ const from = point.XYZ() - xyz(location);
    gp_XYZ const along = axis * from.Dot(axis);
    gp_XYZ const across = from - along;
    return xyz(location) + along + across * std::cos(angle) +
           axis.Crossed(across) * std::sin(angle);
}

/// A point beside a surface, by its normal, which is worked out from differences.
gp_Pnt beside(geom::Surface & base, double distance, double u, double v)
{
    constexpr double Step = 1e-4;
    gp_XYZ const du = pointAt(base, u + Step, v).XYZ() - pointAt(base, u - Step, v).XYZ();
    gp_XYZ const dv = pointAt(base, u, v + Step).XYZ() - pointAt(base, u, v - Step).XYZ();
    return pointAt(base, u, v).XYZ() + du.Crossed(dv).Normalized() * distance;
}

} // namespace

gp_Pnt pointAt(geom::Curve & curve, double parameter)
{
    switch (curve.getType()) {
    case geom::Curve::Line: {
        double point[3];
        double direction[3];
        static_cast<geom::Line &>(curve).getPoint(point);
        static_cast<geom::Line &>(curve).getDirection(direction);
        return xyz(point) + xyz(direction) * parameter;
    }
    case geom::Curve::Circle: {
        auto & circle = static_cast<geom::Circle &>(curve);
        return Axes(circle).at(parameter, circle.getRadius(), 0);
    }
    case geom::Curve::Ellipse: {
        auto & ellipse = static_cast<geom::Ellipse &>(curve);
        Axes const axes(ellipse);
        return axes.location + axes.x * (ellipse.getFirstRadius() * std::cos(parameter)) +
               axes.y * (ellipse.getSecondRadius() * std::sin(parameter));
    }
    case geom::Curve::BSplineCurve: {
        auto const point = splinePoint<3>(static_cast<geom::BSplineCurve &>(curve), parameter);
        return {point[0], point[1], point[2]};
    }
    default:
        throw std::invalid_argument("a curve of another kind");
    }
}

gp_Pnt pointAt(geom::Surface & surface, double u, double v)
{
    switch (surface.getType()) {
    case geom::Surface::Plane: {
        Axes const axes(static_cast<geom::Plane &>(surface));
        return axes.location + axes.x * u + axes.y * v;
    }
    case geom::Surface::Cylinder: {
        auto & cylinder = static_cast<geom::Cylinder &>(surface);
        return Axes(cylinder).at(u, cylinder.getRadius(), v);
    }
    case geom::Surface::Cone: {
        auto & cone = static_cast<geom::Cone &>(surface);
        return Axes(cone).at(u, cone.getRadius() + v * std::sin(cone.getAngle()),
                             v * std::cos(cone.getAngle()));
    }
    case geom::Surface::Sphere: {
        auto & sphere = static_cast<geom::Sphere &>(surface);
        return Axes(sphere).at(u, sphere.getRadius() * std::cos(v),
                               sphere.getRadius() * std::sin(v));
    }
    case geom::Surface::Torus: {
        auto & torus = static_cast<geom::Torus &>(surface);
        return Axes(torus).at(u, torus.getFirstRadius() + torus.getSecondRadius() * std::cos(v),
                              torus.getSecondRadius() * std::sin(v));
    }
    case geom::Surface::BSpline:
        return splinePoint(static_cast<geom::BSplineSurface &>(surface), u, v);
    case geom::Surface::Revolution: {
        auto & revolution = static_cast<geom::SurfaceOfRevolution &>(surface);
        return turned(pointAt(*revolution.getCurve(), v), revolution, u);
    }
    case geom::Surface::LinearExtrusion: {
        auto & extrusion = static_cast<geom::SurfaceOfLinearExtrusion &>(surface);
        double direction[3];
        extrusion.getDirection(direction);
        return pointAt(*extrusion.getCurve(), u).XYZ() + xyz(direction) * v;
    }
    case geom::Surface::Offset: {
        auto & offset = static_cast<geom::OffsetSurface &>(surface);
        return beside(*offset.getBaseSurface(), offset.getDistance(), u, v);
    }
    default:
        throw std::invalid_argument("a surface of another kind");
    }
}

gp_Pnt2d pointAt(geom::UVCurve & curve, double parameter)
{
    auto const point = splinePoint<2>(curve, parameter);
    return {point[0], point[1]};
}

} // namespace tests
