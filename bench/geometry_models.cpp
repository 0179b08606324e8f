#include "geometry_models.h"

#include <keld-transl/geom/bspline_surface.h>
#include <keld-transl/geom/circle.h>
#include <keld-transl/geom/line.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/surface.h>

#include <algorithm>
#include <random>

namespace bench {

namespace {

class Coordinates
{
public:
    template <class List> void fill(List & list)
    {
        for (double & value : list)
            value = m_Distribution(m_Random);
    }

private:
    std::mt19937_64 m_Random{1};
    std::uniform_real_distribution<double> m_Distribution{-1000, 1000};
};

void fillKnots(double (&knots)[SplineValues::KnotCount],
               int (&multiplicities)[SplineValues::KnotCount], int first)
{
    for (int i = 0; i < SplineValues::KnotCount; ++i) {
        bool const isEnd = i == 0 || i + 1 == SplineValues::KnotCount;
        knots[i] = first + i;
        multiplicities[i] = isEnd ? SplineValues::Degree + 1 : 1;
    }
}

} // namespace

std::vector<SplineValues> const & splineValues()
{
    static std::vector<SplineValues> const list = [] {
        Coordinates coordinates;
        std::vector<SplineValues> made(SplineCount);
        int id = 0;
        for (SplineValues & v : made) {
            v.id = ++id;
            fillKnots(v.knotsU, v.multiplicitiesU, id);
            fillKnots(v.knotsV, v.multiplicitiesV, -id);
            coordinates.fill(v.points);
            coordinates.fill(v.weights);
        }
        return made;
    }();
    return list;
}

std::vector<CurveValues> const & curveValues()
{
    static std::vector<CurveValues> const list = [] {
        Coordinates coordinates;
        std::vector<CurveValues> made(CurveCount);
        int id = 0;
        for (CurveValues & v : made) {
            v.id = ++id;
            v.isLine = id % 2 == 1;
            coordinates.fill(v.location);
            coordinates.fill(v.first);
            coordinates.fill(v.second);
            v.radius = id;
        }
        return made;
    }();
    return list;
}

void createSplines()
{
    constexpr int Degree = SplineValues::Degree;
    constexpr int Knots = SplineValues::KnotCount;
    constexpr int Points = SplineValues::PointsADirection;
    geom::Parameterization const none;
    for (SplineValues const & v : splineValues())
        transl_tk::Surface::create(v.id, geom::BSplineSurface::create(
                                             Degree, false, false, Degree, false, false, Knots,
                                             v.multiplicitiesU, v.knotsU, Knots, v.multiplicitiesV,
                                             v.knotsV, Points, Points, v.points, v.weights, none,
                                             none, geom::Surface::Type::BSpline));
}

void createCurves()
{
    geom::Parameterization const none;
    for (CurveValues const & v : curveValues())
        if (v.isLine)
            transl_tk::Curve3D::create(v.id, geom::Line::create(v.location, v.first, none));
        else
            transl_tk::Curve3D::create(v.id, geom::Circle::create(v.location, v.first, v.second,
                                                                  v.second, v.radius, none));
}

} // namespace bench
