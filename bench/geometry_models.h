#ifndef KELD_BENCH_GEOMETRY_MODELS_H
#define KELD_BENCH_GEOMETRY_MODELS_H

#include <vector>

namespace bench {

constexpr int SplineCount = 200000;
constexpr int CurveCount = 2000000;

/// A rational B-spline surface of degree 3 by 3 with 10 by 10 control points.
struct SplineValues
{
    static constexpr int Degree = 3;
    static constexpr int KnotCount = 8;
    static constexpr int PointsADirection = 10;
    static constexpr int PointCount = PointsADirection * PointsADirection;

    int id;
    int multiplicitiesU[KnotCount];
    int multiplicitiesV[KnotCount];
    double knotsU[KnotCount];
    double knotsV[KnotCount];
    double points[3 * PointCount];
    double weights[PointCount];
};

std::vector<SplineValues> const & splineValues();

/// A line, which takes the first six numbers, or a circle.
struct CurveValues
{
    int id;
    bool isLine;
    double location[3];
    double first[3];
    double second[3];
    double radius;
};

/// Lines and circles in turn.
std::vector<CurveValues> const & curveValues();

/// Makes the models in the current sub-pool with the bare calls.
void createSplines();
void createCurves();

} // namespace bench

#endif
