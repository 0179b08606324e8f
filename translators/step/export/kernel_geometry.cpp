#include "export/kernel_geometry.h"

#include "kernel_splines.h"

#include <keld-transl/geom/bspline_curve.h>
#include <keld-transl/geom/bspline_surface.h>
#include <keld-transl/geom/circle.h>
#include <keld-transl/geom/cone.h>
#include <keld-transl/geom/cylinder.h>
#include <keld-transl/geom/ellipse.h>
#include <keld-transl/geom/line.h>
#include <keld-transl/geom/line_strip.h>
#include <keld-transl/geom/offset_surface.h>
#include <keld-transl/geom/plane.h>
#include <keld-transl/geom/ruled_surface.h>
#include <keld-transl/geom/sphere.h>
#include <keld-transl/geom/surface_of_linear_extrusion.h>
#include <keld-transl/geom/surface_of_revolution.h>
#include <keld-transl/geom/torus.h>

#include <GeomFill.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_Circle.hxx>
#include <Geom_ConicalSurface.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_Ellipse.hxx>
#include <Geom_Line.hxx>
#include <Geom_OffsetSurface.hxx>
#include <Geom_Plane.hxx>
#include <Geom_SphericalSurface.hxx>
#include <Geom_SurfaceOfLinearExtrusion.hxx>
#include <Geom_SurfaceOfRevolution.hxx>
#include <Geom_ToroidalSurface.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <Precision.hxx>
#include <Standard_NotImplemented.hxx>
#include <cmath>

namespace step {

namespace {

gp_Pnt pointOf(double const (&values)[3])
{
    return {values[0], values[1], values[2]};
}

gp_Dir directionOf(double const (&values)[3])
{
    return {values[0], values[1], values[2]};
}

template <class Shape> gp_Ax3 axesOf(Shape & shape)
{
    double location[3];
    double first[3];
    double second[3];
    double third[3];
    shape.getPlacement(location, first, second, third);
    return {pointOf(location), directionOf(third), directionOf(first)};
}

TColgp_Array1OfPnt polesOf(std::vector<double> const & points)
{
    TColgp_Array1OfPnt poles(1, static_cast<int>(points.size() / 3));
    for (int i = 0; i < poles.Length(); ++i) {
        auto const * const point = points.data() + std::ptrdiff_t{3} * i;
        poles.SetValue(i + 1, {point[0], point[1], point[2]});
    }
    return poles;
}

Handle(Geom_Curve) splineFrom(geom::BSplineCurve & spline)
{
    int degree = 0;
    bool periodic = false;
    bool closed = false;
    spline.getSplineForm(degree, periodic, closed);
    int const count = spline.getNumControlPoints();
    KernelKnots const knots(spline.getNumKnots(), [&](double * values, int * multiplicities) {
        spline.getKnots(values, multiplicities);
    });
    TColgp_Array1OfPnt const poles =
        polesOf(fetched(3LL * count, [&](double * points) { spline.getControlPoints(points); }));
    if (!spline.isRational())
        return new Geom_BSplineCurve(poles, knots.values, knots.multiplicities, degree, periodic);
    TColStd_Array1OfReal weights(1, count);
    spline.getWeights(&weights.ChangeFirst());
    return new Geom_BSplineCurve(poles, weights, knots.values, knots.multiplicities, degree,
                                 periodic);
}

/// A spline of degree 1 with a knot at each point, at the distance from the start.
Handle(Geom_Curve) splineFrom(geom::LineStrip & strip)
{
    std::vector<double> const points =
        fetched(3LL * strip.getNumPoints(), [&](double * values) { strip.getPoints(values); });
    std::vector<gp_Pnt> corners;
    std::vector<double> distances;
    for (std::size_t i = 0; i < points.size(); i += 3) {
        gp_Pnt const point(points[i], points[i + 1], points[i + 2]);
        double const step = corners.empty() ? 0 : point.Distance(corners.back());
        if (!corners.empty() && step < Precision::Confusion())
            continue;
        distances.push_back(distances.empty() ? 0 : distances.back() + step);
        corners.push_back(point);
    }
    int const count = static_cast<int>(corners.size());
    if (count < 2)
        throw Standard_RangeError("a line strip without length");
    TColgp_Array1OfPnt const poles(corners.front(), 1, count);
    TColStd_Array1OfReal const knots(distances.front(), 1, count);
    TColStd_Array1OfInteger multiplicities(1, count);
    multiplicities.Init(1);
    multiplicities.SetValue(1, 2);
    multiplicities.SetValue(count, 2);
    return new Geom_BSplineCurve(poles, knots, multiplicities, 1);
}

Handle(Geom_Surface) splineFrom(geom::BSplineSurface & spline)
{
    int uDegree = 0;
    int vDegree = 0;
    bool uPeriodic = false;
    bool vPeriodic = false;
    bool closed = false;
    spline.getSplineFormU(uDegree, uPeriodic, closed);
    spline.getSplineFormV(vDegree, vPeriodic, closed);
    KernelKnots const u(spline.getNumKnotsU(), [&](double * values, int * multiplicities) {
        spline.getKnotsU(values, multiplicities);
    });
    KernelKnots const v(spline.getNumKnotsV(), [&](double * values, int * multiplicities) {
        spline.getKnotsV(values, multiplicities);
    });
    int const uCount = spline.getNumControlPointsU();
    int const vCount = spline.getNumControlPointsV();
    long long const count = static_cast<long long>(uCount) * vCount;
    std::vector<double> const points =
        fetched(3 * count, [&](double * values) { spline.getControlPoints(values); });
    std::vector<double> weightList(static_cast<std::size_t>(count), 1.0);
    spline.getWeights(weightList.data());
    TColgp_Array2OfPnt poles(1, uCount, 1, vCount);
    TColStd_Array2OfReal weights(1, uCount, 1, vCount);
    for (int i = 0; i < uCount; ++i) {
        for (int k = 0; k < vCount; ++k) {
            auto const at = static_cast<std::size_t>(i) * static_cast<std::size_t>(vCount) +
                            static_cast<std::size_t>(k);
            poles.SetValue(i + 1, k + 1, {points[3 * at], points[3 * at + 1], points[3 * at + 2]});
            weights.SetValue(i + 1, k + 1, weightList[at]);
        }
    }
    if (!spline.isRational())
        return new Geom_BSplineSurface(poles, u.values, v.values, u.multiplicities,
                                       v.multiplicities, uDegree, vDegree, uPeriodic, vPeriodic);
    return new Geom_BSplineSurface(poles, weights, u.values, v.values, u.multiplicities,
                                   v.multiplicities, uDegree, vDegree, uPeriodic, vPeriodic);
}

/// A stretch of a conic is not the whole of it, and a profile is only as long as its range.
Handle(Geom_Curve) profileFrom(geom::Curve * curve)
{
    if (curve == nullptr)
        throw Standard_NotImplemented("a swept surface without a curve");
    return kernelCurve(*curve);
}

} // namespace

Handle(Geom_Curve) kernelCurve(geom::Curve & curve)
{
    switch (curve.getType()) {
    case geom::Curve::Line: {
        double point[3];
        double direction[3];
        static_cast<geom::Line &>(curve).getPoint(point);
        static_cast<geom::Line &>(curve).getDirection(direction);
        return new Geom_Line(pointOf(point), directionOf(direction));
    }
    case geom::Curve::Circle: {
        auto & circle = static_cast<geom::Circle &>(curve);
        return new Geom_Circle(axesOf(circle).Ax2(), circle.getRadius());
    }
    case geom::Curve::Ellipse: {
        auto & ellipse = static_cast<geom::Ellipse &>(curve);
        return new Geom_Ellipse(axesOf(ellipse).Ax2(), ellipse.getFirstRadius(),
                                ellipse.getSecondRadius());
    }
    case geom::Curve::BSplineCurve:
        return splineFrom(static_cast<geom::BSplineCurve &>(curve));
    case geom::Curve::LineStrip:
        return splineFrom(static_cast<geom::LineStrip &>(curve));
    default:
        throw Standard_NotImplemented("a curve of another kind");
    }
}

Handle(Geom_Surface) kernelSurface(geom::Surface & surface)
{
    switch (surface.getType()) {
    case geom::Surface::Plane:
        return new Geom_Plane(axesOf(static_cast<geom::Plane &>(surface)));
    case geom::Surface::Cylinder: {
        auto & cylinder = static_cast<geom::Cylinder &>(surface);
        return new Geom_CylindricalSurface(axesOf(cylinder), cylinder.getRadius());
    }
    case geom::Surface::Cone: {
        auto & cone = static_cast<geom::Cone &>(surface);
        return new Geom_ConicalSurface(axesOf(cone), cone.getAngle(), cone.getRadius());
    }
    case geom::Surface::Sphere: {
        auto & sphere = static_cast<geom::Sphere &>(surface);
        return new Geom_SphericalSurface(axesOf(sphere), sphere.getRadius());
    }
    case geom::Surface::Torus: {
        auto & torus = static_cast<geom::Torus &>(surface);
        return new Geom_ToroidalSurface(axesOf(torus), torus.getFirstRadius(),
                                        torus.getSecondRadius());
    }
    case geom::Surface::BSpline:
        return splineFrom(static_cast<geom::BSplineSurface &>(surface));
    case geom::Surface::Revolution: {
        auto & revolution = static_cast<geom::SurfaceOfRevolution &>(surface);
        double point[3];
        double direction[3];
        revolution.getAxisPoint(point);
        revolution.getAxisDirection(direction);
        return new Geom_SurfaceOfRevolution(profileFrom(revolution.getCurve()),
                                            gp_Ax1(pointOf(point), directionOf(direction)));
    }
    case geom::Surface::LinearExtrusion: {
        auto & extrusion = static_cast<geom::SurfaceOfLinearExtrusion &>(surface);
        double direction[3];
        extrusion.getDirection(direction);
        return new Geom_SurfaceOfLinearExtrusion(profileFrom(extrusion.getCurve()),
                                                 directionOf(direction));
    }
    case geom::Surface::Offset: {
        auto & offset = static_cast<geom::OffsetSurface &>(surface);
        if (offset.getBaseSurface() == nullptr)
            throw Standard_NotImplemented("an offset surface without a base");
        return new Geom_OffsetSurface(kernelSurface(*offset.getBaseSurface()),
                                      offset.getDistance());
    }
    case geom::Surface::Ruled: {
        auto & ruled = static_cast<geom::RuledSurface &>(surface);
        return GeomFill::Surface(profileFrom(ruled.getFirstCurve()),
                                 profileFrom(ruled.getSecondCurve()));
    }
    default:
        throw Standard_NotImplemented("a surface of another kind");
    }
}

} // namespace step
