#include "stream/random_shapes.h"

#include "support/models.h"

#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/uv_curve.h>

namespace tests {

using namespace transl_tk;

namespace {

void addValues(ShapeDescription & shape, Decisions & decisions, int count)
{
    for (; count > 0; --count)
        shape.values.push_back(decisions.value());
}

void addNumbers(ShapeDescription & shape, Decisions & decisions, int count)
{
    for (; count > 0; --count)
        shape.numbers.push_back(decisions.number());
}

geom::Parameterization randomParameterization(Decisions & decisions)
{
    geom::Parameterization made;
    made.m_Form = static_cast<geom::ParamForm>(decisions.number());
    for (int left = decisions.below(3); left > 0; --left)
        made.m_Values.push_back(decisions.value());
    return made;
}

void makeSpline(ShapeDescription & shape, Decisions & decisions, int dimension)
{
    int const points = decisions.below(4);
    int const knots = decisions.below(4);
    bool const isRational = points != 0 && decisions.below(2) != 0;
    shape.numbers = {
        decisions.number(), decisions.below(2), decisions.below(2), isRational, points, knots};
    addNumbers(shape, decisions, knots);
    addValues(shape, decisions, (dimension + isRational) * points + knots);
}

void makeSplineSurface(ShapeDescription & shape, Decisions & decisions)
{
    int const u = decisions.below(3);
    int const v = decisions.below(3);
    int const knotsU = decisions.below(3);
    int const knotsV = decisions.below(3);
    bool const isRational = u * v != 0 && decisions.below(2) != 0;
    int const form = decisions.below(2) != 0 ? decisions.number() : geom::Surface::BSpline;
    shape.numbers = {form,
                     decisions.number(),
                     decisions.below(2),
                     decisions.below(2),
                     decisions.number(),
                     decisions.below(2),
                     decisions.below(2),
                     isRational,
                     u,
                     v,
                     knotsU,
                     knotsV};
    addNumbers(shape, decisions, knotsU + knotsV);
    addValues(shape, decisions, (3 + isRational) * u * v + knotsU + knotsV);
}

/// A curve of any kind, or null. A member of a composite is no composite, as that does not travel.
ShapeDescription randomCurve(Decisions & decisions, bool isMember = false)
{
    constexpr int Kinds[] = {0, 1, 2, 3, 5, 6, 7};
    ShapeDescription shape;
    shape.tag = Kinds[decisions.below(isMember ? 6 : 7)];
    curveKinds.insert(shape.tag);
    if (shape.tag == 0)
        return shape;
    shape.parameterizations = {randomParameterization(decisions)};
    switch (shape.tag) {
    case geom::Curve::Circle:
        addValues(shape, decisions, 10);
        break;
    case geom::Curve::BSplineCurve:
        makeSpline(shape, decisions, 3);
        break;
    case geom::Curve::Ellipse:
        addValues(shape, decisions, 11);
        break;
    case geom::Curve::Line:
        addValues(shape, decisions, 6);
        break;
    case geom::Curve::LineStrip:
        addValues(shape, decisions, 3 * decisions.below(4));
        break;
    default:
        for (int left = decisions.below(5); left > 0; --left)
            shape.inner.push_back(randomCurve(decisions, true));
    }
    return shape;
}

/// A surface of any kind, or null; offsets go on as long as the decisions say so.
ShapeDescription randomSurface(Decisions & decisions)
{
    constexpr int Kinds[] = {0, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12, 5, 5, 5};
    ShapeDescription shape;
    shape.tag = Kinds[decisions.below(14)];
    surfaceKinds.insert(shape.tag);
    if (shape.tag == 0)
        return shape;
    shape.parameterizations = {randomParameterization(decisions),
                               randomParameterization(decisions)};
    switch (shape.tag) {
    case geom::Surface::BSpline:
        makeSplineSurface(shape, decisions);
        break;
    case geom::Surface::Cone:
    case geom::Surface::Torus:
        addValues(shape, decisions, 11);
        break;
    case geom::Surface::Cylinder:
    case geom::Surface::Sphere:
        addValues(shape, decisions, 10);
        break;
    case geom::Surface::Offset:
        addValues(shape, decisions, 1);
        shape.inner = {randomSurface(decisions)};
        break;
    case geom::Surface::Revolution:
        addValues(shape, decisions, 6);
        shape.inner = {randomCurve(decisions)};
        break;
    case geom::Surface::Ruled:
        shape.inner = {randomCurve(decisions), randomCurve(decisions)};
        break;
    case geom::Surface::LinearExtrusion:
        addValues(shape, decisions, 3);
        shape.inner = {randomCurve(decisions)};
        break;
    default:
        addValues(shape, decisions, 9);
    }
    return shape;
}

} // namespace

Shapes randomShapes(Decisions & decisions, int most)
{
    Shapes shapes;
    for (; most > 0 && !decisions.areOver(); --most) {
        int const id = decisions.id();
        switch (decisions.below(4)) {
        case 0:
            makeSpline(shapes.uvCurves[id] = {}, decisions, 2);
            break;
        case 1:
            // No carrier can be made of a curve that is not there.
            if (ShapeDescription curve = randomCurve(decisions); curve.tag != 0)
                shapes.curves[id] = std::move(curve);
            break;
        default:
            shapes.surfaces[id] = randomSurface(decisions);
        }
    }
    return shapes;
}

void makeShapes(Shapes const & shapes, ShapeMaker & maker)
{
    for (auto const & [id, shape] : shapes.curves)
        Curve3D::create(id, maker.curve(shape));
    for (auto const & [id, shape] : shapes.uvCurves)
        UVCurve::create(id, ShapeMaker::uvCurve(shape));
    for (auto const & [id, shape] : shapes.surfaces)
        Surface::create(id, maker.surface(shape));
}

Shapes shapesOfModel()
{
    Shapes shapes;
    SubPool & model = currentSubPool();
    model.m_Curves3D.m_Entities.forEach([&](int id, Base * carrier) {
        shapes.curves[id] = describe(static_cast<Curve3D *>(carrier)->getCurve());
    });
    model.m_UVCurves.m_Entities.forEach([&](int id, Base * carrier) {
        shapes.uvCurves[id] = describe(*static_cast<UVCurve *>(carrier)->getCurve());
    });
    model.m_Surfaces.m_Entities.forEach([&](int id, Base * carrier) {
        shapes.surfaces[id] = describe(static_cast<Surface *>(carrier)->getSurface());
    });
    return shapes;
}

} // namespace tests
