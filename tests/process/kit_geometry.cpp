#include "process/kit_geometry.h"

#include <keld-transl/transl_tk.h>

namespace tests {

namespace {

geom::Parameterization const NoParameters;
double const Origin[3] = {0, 0, 0};
double const X[3] = {1, 0, 0};
double const Y[3] = {0, 1, 0};
double const Z[3] = {0, 0, 1};
int const Multiplicities[2] = {2, 2};
double const Knots[2] = {0, 1};
double const Points[12] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0};

geom::Curve * line()
{
    return geom::Line::create(Origin, X, NoParameters);
}

template <class Make> void curves(int count, Make make)
{
    for (int i = 0; i < count; ++i)
        transl_tk::Curve3D::create(0, make());
}

template <class Make> void surfaces(int count, Make make)
{
    for (int i = 0; i < count; ++i)
        transl_tk::Surface::create(0, make());
}

void makeCurves()
{
    curves(1, line);
    curves(2, [] { return geom::Circle::create(Origin, X, Y, Z, 1, NoParameters); });
    curves(3, [] { return geom::Ellipse::create(Origin, X, Y, Z, 2, 1, NoParameters); });
    curves(4, [] {
        return geom::BSplineCurve::create(1, false, false, 2, Multiplicities, Knots, 2, Points,
                                          nullptr, NoParameters);
    });
    curves(5, [] { return geom::LineStrip::create(NoParameters); });
    curves(6, [] { return geom::CompositeCurve::create(nullptr, 0, NoParameters); });
}

void makeSurfaces()
{
    geom::Surface * const plane = geom::Plane::create(Origin, X, Y, Z, NoParameters, NoParameters);
    surfaces(1, [&] { return plane; });
    surfaces(2,
             [] { return geom::Cylinder::create(Origin, X, Y, Z, 1, NoParameters, NoParameters); });
    surfaces(
        3, [] { return geom::Cone::create(Origin, X, Y, Z, 1, 0.5, NoParameters, NoParameters); });
    surfaces(4,
             [] { return geom::Sphere::create(Origin, X, Y, Z, 1, NoParameters, NoParameters); });
    surfaces(5,
             [] { return geom::Torus::create(Origin, X, Y, Z, 2, 1, NoParameters, NoParameters); });
    surfaces(6, [] {
        return geom::BSplineSurface::create(
            1, false, false, 1, false, false, 2, Multiplicities, Knots, 2, Multiplicities, Knots, 2,
            2, Points, nullptr, NoParameters, NoParameters, geom::Surface::Type::BSpline);
    });
    surfaces(7, [] {
        return geom::SurfaceOfRevolution::create(Origin, Z, line(), NoParameters, NoParameters);
    });
    surfaces(8, [] {
        return geom::SurfaceOfLinearExtrusion::create(line(), Z, NoParameters, NoParameters);
    });
    surfaces(9,
             [] { return geom::RuledSurface::create(line(), line(), NoParameters, NoParameters); });
    surfaces(10, [&] { return geom::OffsetSurface::create(plane, 1, NoParameters, NoParameters); });
    surfaces(11, [] { return nullptr; });
}

} // namespace

void makeCountedGeometry()
{
    makeCurves();
    makeSurfaces();
    for (int i = 0; i < 2; ++i)
        transl_tk::UVCurve::create(0, geom::UVCurve::create(1, false, false, 2, Multiplicities,
                                                            Knots, 2, Points, nullptr));
    for (int i = 0; i < 3; ++i)
        transl_tk::CartesianCoord::create(0, Origin, X, Y, Z);
    for (int i = 0; i < 4; ++i)
        transl_tk::SpotWeld::create(0, 1, 2, 3);
}

} // namespace tests
