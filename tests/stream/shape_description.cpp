#include "stream/shape_description.h"

#include <keld-transl/geom/bspline_curve.h>
#include <keld-transl/geom/bspline_surface.h>
#include <keld-transl/geom/circle.h>
#include <keld-transl/geom/composite_curve.h>
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

#include <algorithm>

namespace tests {

namespace {

using namespace geom;

/// Takes the lists of a description apart, from the front.
class Parts
{
public:
    explicit Parts(ShapeDescription const & description)
        : m_Number(description.numbers.data()), m_Value(description.values.data())
    {}

    int number() { return *m_Number++; }
    bool flag() { return number() != 0; }
    int const * numbers(int count) { return std::exchange(m_Number, m_Number + count); }
    double value() { return *m_Value++; }
    double const * values(int count) { return std::exchange(m_Value, m_Value + count); }
    double const (&triple())[3] { return *reinterpret_cast<double const(*)[3]>(values(3)); }

private:
    int const * m_Number;
    double const * m_Value;
};

void addTriple(ShapeDescription & description, double const (&triple)[3])
{
    description.values.insert(description.values.end(), triple, triple + 3);
}

template <class Kind> void addPlacement(ShapeDescription & description, Kind & shape)
{
    double rows[4][3];
    shape.getPlacement(rows[0], rows[1], rows[2], rows[3]);
    for (int i = 0; i < 3; ++i)
        addTriple(description, rows[i]);
}

/// Appends `count` values that `get` fills in.
template <class Get>
void addValues(ShapeDescription & description, std::size_t count, Get const & get)
{
    std::size_t const old = description.values.size();
    description.values.resize(old + count);
    get(description.values.data() + old);
}

template <class Get> void addKnots(ShapeDescription & description, int count, Get const & get)
{
    auto const size = static_cast<std::size_t>(count);
    std::size_t const old = description.numbers.size();
    description.numbers.resize(old + size);
    int * const multiplicities = description.numbers.data() + old;
    addValues(description, size, [&](double * knots) { get(knots, multiplicities); });
}

/// The numbers are degree, flags, whether rational, counts of points and knots, multiplicities.
template <class Spline>
void addSpline(ShapeDescription & description, Spline & spline, std::size_t dimension)
{
    int degree = 0;
    bool flags[2] = {};
    spline.getSplineForm(degree, flags[0], flags[1]);
    int const points = spline.getNumControlPoints();
    auto const size = static_cast<std::size_t>(points);
    description.numbers = {
        degree, flags[0], flags[1], spline.isRational(), points, spline.getNumKnots()};
    addValues(description, dimension * size, [&](double * to) { spline.getControlPoints(to); });
    if (spline.isRational())
        addValues(description, size, [&](double * to) { spline.getWeights(to); });
    addKnots(description, spline.getNumKnots(),
             [&](double * knots, int * multiplicities) { spline.getKnots(knots, multiplicities); });
}

/// Makes a spline curve of the parts that `addSpline` lists.
template <class Spline, class... Last>
Spline * makeSpline(Parts parts, int dimension, Last const &... last)
{
    int const degree = parts.number();
    bool const flagA = parts.flag();
    bool const flagB = parts.flag();
    bool const isRational = parts.flag();
    int const points = parts.number();
    int const knots = parts.number();
    double const * const pointValues = parts.values(dimension * points);
    double const * const weights = isRational ? parts.values(points) : nullptr;
    return Spline::create(degree, flagA, flagB, knots, parts.numbers(knots), parts.values(knots),
                          points, pointValues, weights, last...);
}

template <class Kind, std::size_t Radii, class... Last>
Kind * makePlaced(Parts parts, Last const &... last)
{
    auto const & location = parts.triple();
    auto const & first = parts.triple();
    auto const & second = parts.triple();
    if constexpr (Radii == 0) {
        return Kind::create(location, first, second, Nowhere, last...);
    } else if constexpr (Radii == 1) {
        return Kind::create(location, first, second, Nowhere, parts.value(), last...);
    } else {
        double const radius = parts.value();
        return Kind::create(location, first, second, Nowhere, radius, parts.value(), last...);
    }
}

LineStrip * makeLineStrip(ShapeDescription const & description, Parameterization const & parameters)
{
    LineStrip * const strip = LineStrip::create(parameters);
    for (std::size_t i = 0; i + 2 < description.values.size(); i += 3)
        strip->addPoint(description.values[i], description.values[i + 1],
                        description.values[i + 2]);
    return strip;
}

/// The numbers are the form, both degrees with flags, whether rational, four counts, the
/// multiplicities.
BSplineSurface * makeSplineSurface(ShapeDescription const & description, Parameterization const & u,
                                   Parameterization const & v)
{
    Parts parts(description);
    auto const form = static_cast<Surface::Type>(parts.number());
    int const * const n = parts.numbers(11);
    int const points = n[7] * n[8];
    double const * const pointValues = parts.values(3 * points);
    double const * const weights = n[6] != 0 ? parts.values(points) : nullptr;
    int const * const multiplicitiesU = parts.numbers(n[9]);
    double const * const knotsU = parts.values(n[9]);
    return BSplineSurface::create(n[0], n[1] != 0, n[2] != 0, n[3], n[4] != 0, n[5] != 0, n[9],
                                  multiplicitiesU, knotsU, n[10], parts.numbers(n[10]),
                                  parts.values(n[10]), n[7], n[8], pointValues, weights, u, v,
                                  form);
}

void addSplineSurface(ShapeDescription & description, BSplineSurface & spline)
{
    int degrees[2] = {};
    bool flags[4] = {};
    spline.getSplineFormU(degrees[0], flags[0], flags[1]);
    spline.getSplineFormV(degrees[1], flags[2], flags[3]);
    int const u = spline.getNumControlPointsU();
    int const v = spline.getNumControlPointsV();
    description.numbers = {
        spline.getSurfaceForm(), degrees[0], flags[0], flags[1], degrees[1], flags[2], flags[3],
        spline.isRational(),     u,          v,        0,        0};
    description.numbers[10] = spline.getNumKnotsU();
    description.numbers[11] = spline.getNumKnotsV();
    auto const points = static_cast<std::size_t>(u) * static_cast<std::size_t>(v);
    addValues(description, 3 * points, [&](double * to) { spline.getControlPoints(to); });
    if (spline.isRational())
        addValues(description, points, [&](double * to) { spline.getWeights(to); });
    addKnots(description, spline.getNumKnotsU(),
             [&](double * knots, int * numbers) { spline.getKnotsU(knots, numbers); });
    addKnots(description, spline.getNumKnotsV(),
             [&](double * knots, int * numbers) { spline.getKnotsV(knots, numbers); });
}

bool same(Parameterization const & one, Parameterization const & other)
{
    return one.m_Form == other.m_Form && bitsOf(one.m_Values) == bitsOf(other.m_Values);
}

} // namespace

bool ShapeDescription::operator==(ShapeDescription const & other) const
{
    return tag == other.tag && numbers == other.numbers && bitsOf(values) == bitsOf(other.values) &&
           inner == other.inner &&
           std::equal(parameterizations.begin(), parameterizations.end(),
                      other.parameterizations.begin(), other.parameterizations.end(), same);
}

Curve * ShapeMaker::curve(ShapeDescription const & description)
{
    if (description.tag == 0)
        return nullptr;
    Parameterization const & parameters = description.parameterizations.at(0);
    Parts parts(description);
    switch (description.tag) {
    case Curve::Circle:
        return makePlaced<Circle, 1>(parts, parameters);
    case Curve::BSplineCurve:
        return makeSpline<BSplineCurve>(parts, 3, parameters);
    case Curve::Ellipse:
        return makePlaced<Ellipse, 2>(parts, parameters);
    case Curve::Line: {
        auto const & point = parts.triple();
        return Line::create(point, parts.triple(), parameters);
    }
    case Curve::LineStrip:
        return makeLineStrip(description, parameters);
    default:
        break;
    }
    std::vector<Curve *> members;
    for (ShapeDescription const & member : description.inner)
        members.push_back(m_Members.emplace_back(curve(member)).get());
    return CompositeCurve::create(members.data(), static_cast<unsigned>(members.size()),
                                  parameters);
}

Surface * ShapeMaker::surface(ShapeDescription const & description)
{
    if (description.tag == 0)
        return nullptr;
    Parameterization const & u = description.parameterizations.at(0);
    Parameterization const & v = description.parameterizations.at(1);
    Parts parts(description);
    switch (description.tag) {
    case Surface::BSpline:
        return makeSplineSurface(description, u, v);
    case Surface::Cone:
        return makePlaced<Cone, 2>(parts, u, v);
    case Surface::Cylinder:
        return makePlaced<Cylinder, 1>(parts, u, v);
    case Surface::Offset: {
        auto base = owned(surface(description.inner.at(0)));
        m_Bases.push_back(std::move(base));
        return OffsetSurface::create(m_Bases.back().get(), parts.value(), u, v);
    }
    case Surface::Revolution: {
        auto const & point = parts.triple();
        return SurfaceOfRevolution::create(point, parts.triple(), curve(description.inner.at(0)), u,
                                           v);
    }
    case Surface::Ruled: {
        Curve * const first = curve(description.inner.at(0));
        return RuledSurface::create(first, curve(description.inner.at(1)), u, v);
    }
    case Surface::LinearExtrusion:
        return SurfaceOfLinearExtrusion::create(curve(description.inner.at(0)), parts.triple(), u,
                                                v);
    case Surface::Torus:
        return makePlaced<Torus, 2>(parts, u, v);
    case Surface::Sphere:
        return makePlaced<Sphere, 1>(parts, u, v);
    default:
        return makePlaced<Plane, 0>(parts, u, v);
    }
}

UVCurve * ShapeMaker::uvCurve(ShapeDescription const & description)
{
    return makeSpline<UVCurve>(Parts(description), 2);
}

ShapeDescription describe(UVCurve & curve)
{
    ShapeDescription description;
    addSpline(description, curve, 2);
    return description;
}

ShapeDescription describe(Curve * curve)
{
    ShapeDescription description;
    if (curve == nullptr)
        return description;
    description.tag = curve->getType();
    description.parameterizations = {curve->getParameterization()};
    if (auto * const circle = dynamic_cast<Circle *>(curve)) {
        addPlacement(description, *circle);
        description.values.push_back(circle->getRadius());
    } else if (auto * const spline = dynamic_cast<BSplineCurve *>(curve)) {
        addSpline(description, *spline, 3);
    } else if (auto * const ellipse = dynamic_cast<Ellipse *>(curve)) {
        addPlacement(description, *ellipse);
        description.values.push_back(ellipse->getFirstRadius());
        description.values.push_back(ellipse->getSecondRadius());
    } else if (auto * const line = dynamic_cast<Line *>(curve)) {
        double triple[3];
        line->getPoint(triple);
        addTriple(description, triple);
        line->getDirection(triple);
        addTriple(description, triple);
    } else if (auto * const strip = dynamic_cast<LineStrip *>(curve)) {
        addValues(description, 3 * static_cast<std::size_t>(strip->getNumPoints()),
                  [&](double * to) { strip->getPoints(to); });
    } else {
        dynamic_cast<CompositeCurve &>(*curve).forEachCurve(
            [](Curve * member, void * list) {
                static_cast<std::vector<ShapeDescription> *>(list)->push_back(describe(member));
                return true;
            },
            &description.inner);
    }
    return description;
}

ShapeDescription describe(Surface * surface)
{
    ShapeDescription description;
    if (surface == nullptr)
        return description;
    description.tag = surface->getType();
    description.parameterizations = {surface->getParameterizationU(),
                                     surface->getParameterizationV()};
    std::vector<double> & values = description.values;
    double triple[3];
    if (auto * const spline = dynamic_cast<BSplineSurface *>(surface)) {
        addSplineSurface(description, *spline);
    } else if (auto * const cone = dynamic_cast<Cone *>(surface)) {
        addPlacement(description, *cone);
        values.push_back(cone->getRadius());
        values.push_back(cone->getAngle());
    } else if (auto * const cylinder = dynamic_cast<Cylinder *>(surface)) {
        addPlacement(description, *cylinder);
        values.push_back(cylinder->getRadius());
    } else if (auto * const offset = dynamic_cast<OffsetSurface *>(surface)) {
        values.push_back(offset->getDistance());
        description.inner = {describe(offset->getBaseSurface())};
    } else if (auto * const revolution = dynamic_cast<SurfaceOfRevolution *>(surface)) {
        revolution->getAxisPoint(triple);
        addTriple(description, triple);
        revolution->getAxisDirection(triple);
        addTriple(description, triple);
        description.inner = {describe(revolution->getCurve())};
    } else if (auto * const ruled = dynamic_cast<RuledSurface *>(surface)) {
        description.inner = {describe(ruled->getFirstCurve()), describe(ruled->getSecondCurve())};
    } else if (auto * const extrusion = dynamic_cast<SurfaceOfLinearExtrusion *>(surface)) {
        extrusion->getDirection(triple);
        addTriple(description, triple);
        description.inner = {describe(extrusion->getCurve())};
    } else if (auto * const torus = dynamic_cast<Torus *>(surface)) {
        addPlacement(description, *torus);
        values.push_back(torus->getFirstRadius());
        values.push_back(torus->getSecondRadius());
    } else if (auto * const sphere = dynamic_cast<Sphere *>(surface)) {
        addPlacement(description, *sphere);
        values.push_back(sphere->getRadius());
    } else {
        addPlacement(description, dynamic_cast<Plane &>(*surface));
    }
    return description;
}

} // namespace tests
