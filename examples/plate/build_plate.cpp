#include "build_plate.h"

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

namespace plate {

namespace {

// All lengths are millimetres. The library keeps numbers as they are and knows no unit.
constexpr double HalfLength = 60;   // along x
constexpr double HalfWidth = 40;    // along y
constexpr double Height = 10;       // along z
constexpr double CornerRadius = 12; // of the outline, seen from above
constexpr double FilletRadius = 2;  // of the upper edge
constexpr double HoleRadius = 4.5;
constexpr double HoleX = 48; // the holes and the rounded corners have common axes
constexpr double HoleY = 28;

constexpr double X[3] = {1, 0, 0};
constexpr double Y[3] = {0, 1, 0};
constexpr double Z[3] = {0, 0, 1};
constexpr double MinusX[3] = {-1, 0, 0};
constexpr double MinusY[3] = {0, -1, 0};

/// For the fourth array of a placement, which is never read: the third axis of a shape is always
/// the cross product of the first with the second.
constexpr double Unread[3] = {0, 0, 0};

struct Corner
{
    double x;
    double y;
    // Where the quarter circle begins and where it ends, turning to the left seen from above.
    double const (&first)[3];
    double const (&second)[3];
};

constexpr Corner Corners[] = {
    {HoleX, HoleY, X, Y},
    {-HoleX, HoleY, Y, MinusX},
    {-HoleX, -HoleY, MinusX, MinusY},
    {HoleX, -HoleY, MinusY, X},
};

/// A straight side of the outline, between two corners: its middle, the direction in which the
/// outline runs along it, the direction to the outside, and half its length.
struct Side
{
    double x;
    double y;
    double const (&along)[3];
    double const (&outward)[3];
    double half;
};

constexpr Side Sides[] = {
    {HalfLength, 0, Y, X, HoleY},
    {0, HalfWidth, MinusX, Y, HoleX},
    {-HalfLength, 0, MinusY, MinusX, HoleY},
    {0, -HalfWidth, X, MinusY, HoleX},
};

/// Parameter values belong to the host and the translators; the library carries them. Here they
/// are the two ends of the used stretch.
geom::Parameterization range(double start, double end)
{
    return {geom::ParamForm::SteppedA, start, end, 2, end - start};
}

/// The multiples of a quarter of pi, for a full turn.
geom::Parameterization fullTurn()
{
    return {geom::ParamForm::Angular, 0, 0, 0, 0};
}

geom::Parameterization quarterTurn()
{
    constexpr double HalfPi = 1.5707963267948966;
    return range(0, HalfPi);
}

// A carrier adopts the shape that it is given and puts it into the current sub-pool; with id 0 it
// takes the next free id. From here on nobody has to free the shape.

void add(geom::Curve * curve)
{
    transl_tk::Curve3D::create(0, curve);
}

void add(geom::Surface * surface)
{
    transl_tk::Surface::create(0, surface);
}

/// A plane whose used part reaches equally far to both sides of its location.
void addPlane(double const (&location)[3], double const (&first)[3], double const (&second)[3],
              double halfU, double halfV)
{
    add(geom::Plane::create(location, first, second, Unread, range(-halfU, halfU),
                            range(-halfV, halfV)));
}

void addFlatFaces()
{
    double const bottom[3] = {0, 0, 0};
    double const top[3] = {0, 0, Height};
    addPlane(bottom, Y, X, HalfWidth, HalfLength); // the third axis points down, out of the part
    addPlane(top, X, Y, HalfLength - FilletRadius, HalfWidth - FilletRadius);
    constexpr double HalfSide = (Height - FilletRadius) / 2;
    for (Side const & side : Sides) {
        double const middle[3] = {side.x, side.y, HalfSide};
        addPlane(middle, side.along, Z, side.half, HalfSide);
    }
}

/// The walls of the holes, and the circles where they meet the two large faces.
void addHoles()
{
    for (Corner const & corner : Corners) {
        double const low[3] = {corner.x, corner.y, 0};
        double const high[3] = {corner.x, corner.y, Height};
        add(geom::Cylinder::create(low, X, Y, Unread, HoleRadius, fullTurn(), range(0, Height)));
        add(geom::Circle::create(low, X, Y, Unread, HoleRadius, fullTurn()));
        add(geom::Circle::create(high, X, Y, Unread, HoleRadius, fullTurn()));
    }
}

/// Each rounded corner: a wall, a piece of a torus above it, and the arcs on its two borders and at
/// the bottom.
void addCorners()
{
    constexpr double InnerRadius = CornerRadius - FilletRadius;
    for (Corner const & corner : Corners) {
        double const bottom[3] = {corner.x, corner.y, 0};
        double const seam[3] = {corner.x, corner.y, Height - FilletRadius};
        double const top[3] = {corner.x, corner.y, Height};
        add(geom::Cylinder::create(bottom, corner.first, corner.second, Unread, CornerRadius,
                                   quarterTurn(), range(0, Height - FilletRadius)));
        add(geom::Torus::create(seam, corner.first, corner.second, Unread, InnerRadius,
                                FilletRadius, quarterTurn(), quarterTurn()));
        add(geom::Circle::create(bottom, corner.first, corner.second, Unread, CornerRadius,
                                 quarterTurn()));
        add(geom::Circle::create(seam, corner.first, corner.second, Unread, CornerRadius,
                                 quarterTurn()));
        add(geom::Circle::create(top, corner.first, corner.second, Unread, InnerRadius,
                                 quarterTurn()));
    }
}

/// The fillets along the straight sides: a quarter of a cylinder, whose axis lies inside the part,
/// and the lines on its two borders and at the bottom.
void addSides()
{
    for (Side const & side : Sides) {
        double const inwardX = FilletRadius * side.outward[0];
        double const inwardY = FilletRadius * side.outward[1];
        double const axis[3] = {side.x - inwardX, side.y - inwardY, Height - FilletRadius};
        add(geom::Cylinder::create(axis, side.outward, Z, Unread, FilletRadius, quarterTurn(),
                                   range(-side.half, side.half)));

        double const bottom[3] = {side.x, side.y, 0};
        double const seam[3] = {side.x, side.y, Height - FilletRadius};
        double const top[3] = {axis[0], axis[1], Height};
        for (auto const * point : {&bottom, &seam, &top})
            add(geom::Line::create(*point, side.along, range(-side.half, side.half)));
    }
}

/// One groove, given twice: as a curve in space, and as its image in the parameters of the upper
/// face, whose u and v are x and y. A cubic of one span, clamped: two knots of multiplicity 4.
void addGroove()
{
    constexpr int Degree = 3;
    constexpr int Multiplicities[] = {4, 4};
    constexpr double Knots[] = {0, 1};
    constexpr double InSpace[] = {-36, -12, Height, -12, 20, Height,
                                  12,  -20, Height, 36,  12, Height};
    constexpr double OnFace[] = {-36, -12, -12, 20, 12, -20, 36, 12};
    add(geom::BSplineCurve::create(Degree, false, false, 2, Multiplicities, Knots, 4, InSpace,
                                   nullptr, range(0, 1)));
    transl_tk::UVCurve::create(0, geom::UVCurve::create(Degree, false, false, 2, Multiplicities,
                                                        Knots, 4, OnFace, nullptr));
}

} // namespace

void buildPlate()
{
    addFlatFaces();
    addHoles();
    addCorners();
    addSides();
    addGroove();

    // Where the part is mounted: unlike a placement, a coordinate system keeps its third axis.
    double const mount[3] = {0, 0, 0};
    transl_tk::CartesianCoord::create(0, mount, X, Y, Z);
}

} // namespace plate
