#include "model_summary.h"

#include "entity_kinds.h"
#include "facet_summary.h"
#include "numbers.h"
#include "safe_text.h"

#include <keld-transl/model/point3d.h>
#include <keld-transl/reporting/logger.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/surface.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <map>
#include <string>

namespace keld {

namespace {

using transl_tk::EntityStore;
using transl_tk::SubPool;

struct ShapeKind
{
    int type;
    char const * name;
};

/// Stands for the type of a shape that is not there; no kind has this number.
constexpr int NoShape = 0;

constexpr ShapeKind CurveKinds[] = {
    {geom::Curve::Type::Line, "lines"},
    {geom::Curve::Type::Circle, "circles"},
    {geom::Curve::Type::Ellipse, "ellipses"},
    {geom::Curve::Type::BSplineCurve, "B-spline curves"},
    {geom::Curve::Type::LineStrip, "line strips"},
    {geom::Curve::Type::CompositeCurve, "composite curves"},
    {NoShape, "without geometry"},
};

constexpr ShapeKind SurfaceKinds[] = {
    {geom::Surface::Type::Plane, "planes"},
    {geom::Surface::Type::Cylinder, "cylinders"},
    {geom::Surface::Type::Cone, "cones"},
    {geom::Surface::Type::Sphere, "spheres"},
    {geom::Surface::Type::Torus, "tori"},
    {geom::Surface::Type::BSpline, "B-spline surfaces"},
    {geom::Surface::Type::Revolution, "surfaces of revolution"},
    {geom::Surface::Type::LinearExtrusion, "surfaces of linear extrusion"},
    {geom::Surface::Type::Ruled, "ruled surfaces"},
    {geom::Surface::Type::Offset, "offset surfaces"},
    {NoShape, "without geometry"},
};

int typeOfCurve(transl_tk::Base * entity)
{
    auto * const curve = static_cast<transl_tk::Curve3D *>(entity)->getCurve();
    return curve != nullptr ? curve->getType() : NoShape;
}

int typeOfSurface(transl_tk::Base * entity)
{
    auto * const surface = static_cast<transl_tk::Surface *>(entity)->getSurface();
    return surface != nullptr ? surface->getType() : NoShape;
}

template <std::size_t Count>
std::vector<ShapeCount> shapeKinds(EntityStore const & carriers, ShapeKind const (&kinds)[Count],
                                   int (*typeOf)(transl_tk::Base *))
{
    std::map<int, std::size_t> counts;
    carriers.m_Entities.forEach([&](int, transl_tk::Base * carrier) { ++counts[typeOf(carrier)]; });
    std::vector<ShapeCount> result;
    for (ShapeKind const & kind : kinds) {
        std::size_t const count = counts[kind.type];
        if (count > 0)
            result.emplace_back(kind.name, count);
    }
    return result;
}

void printShapeKinds(std::vector<ShapeCount> const & kinds)
{
    for (auto const & [name, count] : kinds)
        std::printf("    %-30s%zu\n", name, count);
}

std::string text(double const (&position)[3])
{
    return numberText(position[0]) + " " + numberText(position[1]) + " " + numberText(position[2]);
}

void getPosition(transl_tk::Base * entity, double (&position)[3])
{
    auto * const point = static_cast<transl_tk::Point3D *>(entity);
    point->getCoordinates(position[0], position[1], position[2]);
}

void printLine(char const * name, std::string const & value)
{
    std::printf("  %-20s%s\n", name, value.c_str());
}

/// A list of a log that does not echo to the console.
constexpr int SilentList = 6;

} // namespace

std::vector<ShapeCount> curveKinds(SubPool const & model)
{
    return shapeKinds(model.m_Curves3D, CurveKinds, typeOfCurve);
}

std::vector<ShapeCount> surfaceKinds(SubPool const & model)
{
    return shapeKinds(model.m_Surfaces, SurfaceKinds, typeOfSurface);
}

Box boxAroundPoints(SubPool const & model)
{
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    Box box = {model.m_Points.m_Entities.empty(),
               {Infinity, Infinity, Infinity},
               {-Infinity, -Infinity, -Infinity}};
    model.m_Points.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        double position[3];
        getPosition(entity, position);
        for (int axis = 0; axis < 3; ++axis) {
            box.low[axis] = std::min(box.low[axis], position[axis]);
            box.high[axis] = std::max(box.high[axis], position[axis]);
        }
    });
    return box;
}

void printSummary(SubPool const & model)
{
    bool empty = true;
    for (EntityKindRow const & kind : EntityKinds) {
        std::size_t const count = (model.*kind.store).m_Entities.size();
        if (count > 0)
            printLine(kind.name, std::to_string(count));
        if (kind.store == &SubPool::m_Curves3D)
            printShapeKinds(curveKinds(model));
        if (kind.store == &SubPool::m_Surfaces)
            printShapeKinds(surfaceKinds(model));
        if (kind.store == &SubPool::m_TriStrips)
            printFacets(model);
        empty = empty && count == 0;
    }
    if (empty)
        std::puts("  The model is empty.");
    Box const box = boxAroundPoints(model);
    if (box.empty)
        return;
    printLine("from", text(box.low));
    printLine("to", text(box.high));
}

void printPoints(SubPool const & model, long long limit)
{
    auto const & points = model.m_Points.m_Entities;
    for (auto entry = points.begin(); entry != points.end() && limit > 0; ++entry, --limit) {
        double position[3];
        getPosition(entry->second, position);
        std::printf("%d: %s\n", entry->first, text(position).c_str());
    }
}

void printLog(SubPool & model)
{
    // A log of its own gives the entries the form that they have in any other.
    transl_tk::Logger printable;
    for (int list = 1; list <= 6; ++list)
        model._logger()->for_each_entry(
            list,
            [](char const * words, cad::ILoggerPolicy::SubType const & subType, bool const & show,
               void * target) {
                static_cast<transl_tk::Logger *>(target)->addEntry(terminalText(words).c_str(),
                                                                   SilentList, subType, show);
                return true;
            },
            &printable);
    std::string const entries =
        printable.GetEntriesOfType(SilentList, cad::ILoggerPolicy::Any, true, false);
    std::fwrite(entries.data(), 1, entries.size(), stderr);
}

} // namespace keld
