#include "model_summary.h"

#include <keld-transl/model/point3d.h>
#include <keld-transl/reporting/logger_policy.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <limits>
#include <string>

namespace keld {

namespace {

using transl_tk::EntityStore;
using transl_tk::SubPool;

constexpr struct
{
    char const * name;
    EntityStore SubPool::*store;
} Kinds[] = {
    {"points", &SubPool::m_Points},
    {"3D curves", &SubPool::m_Curves3D},
    {"UV curves", &SubPool::m_UVCurves},
    {"surfaces", &SubPool::m_Surfaces},
    {"vertices", &SubPool::m_Vertices},
    {"edges", &SubPool::m_Edges},
    {"fins", &SubPool::m_Fins},
    {"loops", &SubPool::m_Loops},
    {"faces", &SubPool::m_Faces},
    {"shells", &SubPool::m_Shells},
    {"bodies", &SubPool::m_Bodies},
    {"product structure", &SubPool::m_Hierarchies},
    {"facets", &SubPool::m_TriStrips},
    {"spot welds", &SubPool::m_SpotWelds},
    {"coordinate systems", &SubPool::m_CartesianCoords},
    {"annotations", &SubPool::m_Annotations},
};

std::string text(double number)
{
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof(digits), number).ptr};
}

std::string text(double const (&position)[3])
{
    return text(position[0]) + " " + text(position[1]) + " " + text(position[2]);
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

} // namespace

void printSummary(SubPool const & model)
{
    bool empty = true;
    for (auto const & kind : Kinds) {
        std::size_t const count = (model.*kind.store).m_Entities.size();
        if (count > 0)
            printLine(kind.name, std::to_string(count));
        empty = empty && count == 0;
    }
    if (empty)
        std::puts("  The model is empty.");
    if (model.m_Points.m_Entities.empty())
        return;

    constexpr double Infinity = std::numeric_limits<double>::infinity();
    double low[3] = {Infinity, Infinity, Infinity};
    double high[3] = {-Infinity, -Infinity, -Infinity};
    model.m_Points.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        double position[3];
        getPosition(entity, position);
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = std::min(low[axis], position[axis]);
            high[axis] = std::max(high[axis], position[axis]);
        }
    });
    printLine("from", text(low));
    printLine("to", text(high));
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
    for (int list = 1; list <= 6; ++list) {
        std::string const entries =
            model._logger()->GetEntriesOfType(list, cad::ILoggerPolicy::Any, true, false);
        std::fwrite(entries.data(), 1, entries.size(), stderr);
    }
}

} // namespace keld
