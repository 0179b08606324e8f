#include "print_model.h"

#include <keld-transl/geom/bspline_curve.h>
#include <keld-transl/geom/circle.h>
#include <keld-transl/geom/cylinder.h>
#include <keld-transl/geom/line.h>
#include <keld-transl/geom/plane.h>
#include <keld-transl/geom/torus.h>
#include <keld-transl/geom/uv_curve.h>
#include <keld-transl/topology/cartesian_coord.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/uv_curve.h>

#include <charconv>
#include <span>
#include <vector>

namespace plate {

namespace {

std::string text(double number)
{
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof(digits), number).ptr};
}

std::string text(std::span<double const> numbers)
{
    std::string result;
    for (double const number : numbers)
        result += (result.empty() ? "(" : " ") + text(number);
    return result + ")";
}

std::string text(geom::Parameterization const & parameters)
{
    return " form " + std::to_string(parameters.m_Form) + " " + text(parameters.m_Values);
}

/// Circles, planes, cylinders and tori stand where their placement says.
template <class Shape> std::string placementText(Shape & shape)
{
    double location[3];
    double first[3];
    double second[3];
    double third[3];
    shape.getPlacement(location, first, second, third);
    return " at " + text(location) + " axes " + text(first) + " " + text(second) + " " +
           text(third);
}

/// The curves in space and in parameter space differ in the size of a point alone.
template <class Spline> std::string splineText(Spline & spline, std::size_t pointSize)
{
    int degree = 0;
    bool flagA = false;
    bool flagB = false;
    spline.getSplineForm(degree, flagA, flagB);

    // The caller makes the room for the getters that fill arrays.
    auto const pointCount = static_cast<std::size_t>(spline.getNumControlPoints());
    std::vector<double> points(pointSize * pointCount);
    spline.getControlPoints(points.data());
    std::vector<double> weights(spline.isRational() ? pointCount : 0);
    spline.getWeights(weights.data());
    auto const knotCount = static_cast<std::size_t>(spline.getNumKnots());
    std::vector<double> knots(knotCount);
    std::vector<int> multiplicities(knotCount);
    spline.getKnots(knots.data(), multiplicities.data());

    std::string result = " degree " + std::to_string(degree) + " points " + text(points);
    if (spline.isRational())
        result += " weights " + text(weights);
    result += " knots";
    for (std::size_t i = 0; i < knotCount; ++i)
        result += " " + text(knots[i]) + " x" + std::to_string(multiplicities[i]);
    return result;
}

// `getType` tells the kind, and so the class to cast to.

std::string shapeText(geom::Curve & curve)
{
    switch (curve.getType()) {
    case geom::Curve::Type::Line: {
        auto & line = static_cast<geom::Line &>(curve);
        double point[3];
        double direction[3];
        line.getPoint(point);
        line.getDirection(direction);
        return "line through " + text(point) + " along " + text(direction);
    }
    case geom::Curve::Type::Circle: {
        auto & circle = static_cast<geom::Circle &>(curve);
        return "circle radius " + text(circle.getRadius()) + placementText(circle);
    }
    case geom::Curve::Type::BSplineCurve:
        return "B-spline curve" + splineText(static_cast<geom::BSplineCurve &>(curve), 3);
    default:
        return "curve of kind " + std::to_string(curve.getType());
    }
}

std::string shapeText(geom::Surface & surface)
{
    switch (surface.getType()) {
    case geom::Surface::Type::Plane:
        return "plane" + placementText(static_cast<geom::Plane &>(surface));
    case geom::Surface::Type::Cylinder: {
        auto & cylinder = static_cast<geom::Cylinder &>(surface);
        return "cylinder radius " + text(cylinder.getRadius()) + placementText(cylinder);
    }
    case geom::Surface::Type::Torus: {
        auto & torus = static_cast<geom::Torus &>(surface);
        return "torus radii " + text(torus.getFirstRadius()) + " " + text(torus.getSecondRadius()) +
               placementText(torus);
    }
    default:
        return "surface of kind " + std::to_string(surface.getType());
    }
}

std::string carrierText(transl_tk::Curve3D & carrier)
{
    geom::Curve & curve = *carrier.getCurve();
    return shapeText(curve) + text(curve.getParameterization());
}

std::string carrierText(transl_tk::UVCurve & carrier)
{
    return carrier.getCurve() != nullptr ? "B-spline curve" + splineText(*carrier.getCurve(), 2)
                                         : "no curve";
}

std::string carrierText(transl_tk::Surface & carrier)
{
    geom::Surface * const surface = carrier.getSurface();
    if (surface == nullptr)
        return "no surface";
    return shapeText(*surface) + " u" + text(surface->getParameterizationU()) + " v" +
           text(surface->getParameterizationV());
}

std::string carrierText(transl_tk::CartesianCoord & system)
{
    double origin[3];
    double first[3];
    double second[3];
    double third[3];
    system.getAxes(origin, first, second, third);
    return "at " + text(origin) + " axes " + text(first) + " " + text(second) + " " + text(third);
}

/// A store holds entities of one kind: the one that `Carrier` names.
template <class Carrier>
std::string storeText(std::string const & title, transl_tk::EntityStore const & store)
{
    std::string result = title + ": " + std::to_string(store.m_Entities.size()) + "\n";
    for (auto const & [id, entity] : store.m_Entities)
        result +=
            "  " + std::to_string(id) + ": " + carrierText(static_cast<Carrier &>(*entity)) + "\n";
    return result;
}

} // namespace

std::string geometryText(transl_tk::SubPool const & model)
{
    return storeText<transl_tk::Surface>("surfaces", model.m_Surfaces) +
           storeText<transl_tk::Curve3D>("curves in space", model.m_Curves3D) +
           storeText<transl_tk::UVCurve>("curves on surfaces", model.m_UVCurves) +
           storeText<transl_tk::CartesianCoord>("coordinate systems", model.m_CartesianCoords);
}

} // namespace plate
