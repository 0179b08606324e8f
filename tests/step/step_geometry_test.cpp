// Each kind of curve and surface of the kernel: what it becomes, and that it runs through the same
// points. The points of what arrived are worked out without the kernel.
#include "import/curves.h"
#include "import/surfaces.h"
#include "import/uv_curves.h"
#include "step/evaluated_shapes.h"

#include <Geom2dAPI_ProjectPointOnCurve.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_BezierCurve.hxx>
#include <Geom2d_Circle.hxx>
#include <Geom2d_Ellipse.hxx>
#include <Geom2d_Hyperbola.hxx>
#include <Geom2d_Line.hxx>
#include <Geom2d_OffsetCurve.hxx>
#include <Geom2d_Parabola.hxx>
#include <Geom2d_TrimmedCurve.hxx>
#include <GeomAPI_ProjectPointOnCurve.hxx>
#include <GeomAPI_ProjectPointOnSurf.hxx>
#include <GeomConvert.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_BezierCurve.hxx>
#include <Geom_BezierSurface.hxx>
#include <Geom_Circle.hxx>
#include <Geom_ConicalSurface.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_Ellipse.hxx>
#include <Geom_Hyperbola.hxx>
#include <Geom_Line.hxx>
#include <Geom_OffsetCurve.hxx>
#include <Geom_OffsetSurface.hxx>
#include <Geom_Parabola.hxx>
#include <Geom_Plane.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_SphericalSurface.hxx>
#include <Geom_SurfaceOfLinearExtrusion.hxx>
#include <Geom_SurfaceOfRevolution.hxx>
#include <Geom_ToroidalSurface.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <ShapeExtend_CompositeSurface.hxx>
#include <TColGeom_HArray2OfSurface.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TColgp_Array1OfPnt2d.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>

namespace {

using tests::pointAt;

constexpr double Exact = 1e-9;
constexpr double Approximated = 1e-6;
constexpr int Steps = 16;

/// A place that is neither at the origin nor along an axis.
gp_Ax2 place()
{
    return {{1, 2, 3}, {1, 2, 2}, {2, 1, -2}};
}

/// The same, left-handed.
gp_Ax3 mirroredPlace()
{
    gp_Ax3 result(place());
    result.ZReverse();
    return result;
}

TColgp_Array1OfPnt poles()
{
    TColgp_Array1OfPnt result(1, 5);
    double const points[][3] = {{0, 0, 0}, {3, 5, 1}, {6, -2, 2}, {9, 4, -1}, {12, 1, 0}};
    for (int i = 0; i < 5; ++i)
        result.SetValue(i + 1, {points[i][0], points[i][1], points[i][2]});
    return result;
}

TColStd_Array1OfReal weights()
{
    TColStd_Array1OfReal result(1, 5);
    double const values[] = {1, 2, 0.5, 3, 1};
    for (int i = 0; i < 5; ++i)
        result.SetValue(i + 1, values[i]);
    return result;
}

/// Knots at 0, 1 and 3, for five control points of degree three; six knots that are once, for a
/// periodic curve.
struct Knots
{
    explicit Knots(bool periodic) : values(1, periodic ? 6 : 3), counts(1, periodic ? 6 : 3)
    {
        double const places[] = {0, 1, 3, 4, 4.5, 6};
        for (int i = 1; i <= values.Length(); ++i) {
            values.SetValue(i, places[i - 1]);
            counts.SetValue(i, periodic ? 1 : i == 2 ? 1 : 4);
        }
    }

    TColStd_Array1OfReal values;
    TColStd_Array1OfInteger counts;
};

Handle(Geom_BSplineCurve) spline(bool rational, bool periodic)
{
    Knots const knots(periodic);
    if (rational)
        return new Geom_BSplineCurve(poles(), weights(), knots.values, knots.counts, 3, periodic);
    return new Geom_BSplineCurve(poles(), knots.values, knots.counts, 3, periodic);
}

struct CurveCase
{
    char const * name;
    std::function<Handle(Geom_Curve)()> make;
    double first;
    double last;
    geom::Curve::Type type;
    char const * changed;
    bool sameParameters = true;
    double tolerance = Exact;
};

void PrintTo(CurveCase const & curve, std::ostream * stream)
{
    *stream << curve.name;
}

class StepCurves : public testing::TestWithParam<CurveCase>
{};

TEST_P(StepCurves, RunThroughTheSamePoints)
{
    CurveCase const & kind = GetParam();
    Handle(Geom_Curve) const curve = kind.make();
    step::CurveResult const made = step::makeCurve(curve, kind.first, kind.last);
    ASSERT_NE(nullptr, made.curve);
    EXPECT_EQ(kind.type, made.curve->getType());
    EXPECT_EQ(kind.changed, made.changed);
    EXPECT_EQ(kind.sameParameters, made.sameParameters);
    for (int i = 0; i <= Steps; ++i) {
        double const parameter = kind.first + (kind.last - kind.first) * i / Steps;
        gp_Pnt const point = pointAt(*made.curve, parameter);
        bool const isSame = kind.sameParameters || i == 0 || i == Steps;
        double const distance = isSame ? point.Distance(curve->Value(parameter))
                                       : GeomAPI_ProjectPointOnCurve(point, curve).LowerDistance();
        EXPECT_LE(distance, kind.tolerance) << "at " << parameter;
    }
    geom::Curve::destruct(made.curve);
}

CurveCase const Curves[] = {
    {"Line",
     [] {
         return new Geom_Line({1, 2, 3}, {2, 3, 6});
     },
     -2, 5, geom::Curve::Line, ""},
    {"Circle", [] { return new Geom_Circle(place(), 4); }, 0, 2 * M_PI, geom::Curve::Circle, ""},
    {"ArcAcrossTheStart", [] { return new Geom_Circle(place(), 4); }, 5, 8, geom::Curve::Circle,
     ""},
    {"Ellipse", [] { return new Geom_Ellipse(place(), 4, 2); }, 0.5, 3, geom::Curve::Ellipse, ""},
    {"Spline", [] { return spline(false, false); }, 0, 3, geom::Curve::BSplineCurve, ""},
    {"StretchOfASpline", [] { return spline(false, false); }, 0.5, 2, geom::Curve::BSplineCurve,
     ""},
    {"RationalSpline", [] { return spline(true, false); }, 0, 3, geom::Curve::BSplineCurve, ""},
    {"PeriodicSpline", [] { return spline(false, true); }, 0, 6, geom::Curve::BSplineCurve, ""},
    {"RationalPeriodicSpline", [] { return spline(true, true); }, 0, 6, geom::Curve::BSplineCurve,
     ""},
    {"Bezier", [] { return new Geom_BezierCurve(poles()); }, 0, 1, geom::Curve::BSplineCurve,
     "Bezier curve as B-spline curve"},
    {"RationalBezier", [] { return new Geom_BezierCurve(poles(), weights()); }, 0.25, 1,
     geom::Curve::BSplineCurve, "Bezier curve as B-spline curve"},
    {"Parabola", [] { return new Geom_Parabola(place(), 2); }, -3, 5, geom::Curve::BSplineCurve,
     "parabola as B-spline curve"},
    {"Hyperbola", [] { return new Geom_Hyperbola(place(), 3, 2); }, -1, 1.5,
     geom::Curve::BSplineCurve, "hyperbola as B-spline curve", false},
    {"TrimmedCircle", [] { return new Geom_TrimmedCurve(new Geom_Circle(place(), 4), 1, 3); }, 1.5,
     2.5, geom::Curve::Circle, ""},
    {"TrimmedTwice",
     [] {
         return new Geom_TrimmedCurve(new Geom_TrimmedCurve(spline(false, false), 0.5, 2.5), 1, 2);
     },
     1, 2, geom::Curve::BSplineCurve, ""},
    {"TrimmedHyperbola",
     [] { return new Geom_TrimmedCurve(new Geom_Hyperbola(place(), 3, 2), -1, 1); }, -1, 1,
     geom::Curve::BSplineCurve, "hyperbola as B-spline curve", false},
    {"OffsetCircle",
     [] { return new Geom_OffsetCurve(new Geom_Circle(place(), 4), 1, place().Direction()); }, 0, 2,
     geom::Curve::BSplineCurve, "offset curve approximated by a B-spline curve", true,
     Approximated},
    {"OffsetSpline",
     [] {
         return new Geom_OffsetCurve(spline(false, false), 0.125, {0, 0, 1});
     },
     0, 3, geom::Curve::BSplineCurve, "offset curve approximated by a B-spline curve", true,
     Approximated},
};

template <class Case> std::string nameOf(testing::TestParamInfo<Case> const & info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Kinds, StepCurves, testing::ValuesIn(Curves), nameOf<CurveCase>);

TEST(StepCurveRanges, AreTheEndsOfTheStretch)
{
    auto const made = step::makeCurve(new Geom_Circle(place(), 4), 0.5, 1.5);
    auto const & values = made.curve->getParameterization().m_Values;
    ASSERT_GE(values.size(), 2U);
    EXPECT_EQ(0.5, values.front());
    EXPECT_EQ(1.5, values.back());
    geom::Curve::destruct(made.curve);
}

TEST(StepCurveRanges, OfAFullTurnAreTheNineAngles)
{
    auto const made = step::makeCurve(new Geom_Circle(place(), 4), 0, 2 * M_PI);
    auto const & values = made.curve->getParameterization().m_Values;
    ASSERT_EQ(9U, values.size());
    for (std::size_t i = 0; i < 9; ++i)
        EXPECT_DOUBLE_EQ(static_cast<double>(i) * M_PI_4, values[i]);
    geom::Curve::destruct(made.curve);
}

struct SurfaceCase
{
    char const * name;
    std::function<Handle(Geom_Surface)()> make;
    step::SurfaceRange range;
    geom::Surface::Type type;
    char const * changed = "";
    bool turned = false;
    bool hasSameParameters = true;
    double tolerance = Exact;
};

void PrintTo(SurfaceCase const & surface, std::ostream * stream)
{
    *stream << surface.name;
}

class StepSurfaces : public testing::TestWithParam<SurfaceCase>
{};

gp_Vec normalOf(geom::Surface & surface, double u, double v)
{
    constexpr double Step = 1e-5;
    return gp_Vec(pointAt(surface, u - Step, v), pointAt(surface, u + Step, v))
        .Crossed(gp_Vec(pointAt(surface, u, v - Step), pointAt(surface, u, v + Step)));
}

/// The distance of a point from a stretch of a surface, and a little around it.
double distanceTo(Handle(Geom_Surface) const & surface, step::SurfaceRange const & range,
                  gp_Pnt const & point)
{
    constexpr double More = 0.5;
    return GeomAPI_ProjectPointOnSurf(point, surface, range.u1 - More, range.u2 + More,
                                      range.v1 - More, range.v2 + More)
        .LowerDistance();
}

TEST_P(StepSurfaces, RunThroughTheSamePoints)
{
    SurfaceCase const & kind = GetParam();
    Handle(Geom_Surface) const surface = kind.make();
    step::SurfaceResult const made = step::makeSurface(surface, kind.range);
    ASSERT_NE(nullptr, made.surface);
    EXPECT_EQ(kind.type, made.surface->getType());
    EXPECT_EQ(kind.changed, made.changed);
    EXPECT_EQ(kind.turned, made.turned);
    EXPECT_EQ(kind.hasSameParameters, made.uv.exists);
    constexpr int Lines = 6;
    for (int i = 0; i <= Lines; ++i) {
        for (int k = 0; k <= Lines; ++k) {
            double const u = kind.range.u1 + (kind.range.u2 - kind.range.u1) * i / Lines;
            double const v = kind.range.v1 + (kind.range.v2 - kind.range.v1) * k / Lines;
            gp_Pnt const point = pointAt(*made.surface, u, made.uv.vFactor * v + made.uv.vShift);
            if (kind.hasSameParameters)
                EXPECT_LE(point.Distance(surface->Value(u, v)), kind.tolerance) << u << ", " << v;
            else
                EXPECT_LE(distanceTo(surface, kind.range, point), kind.tolerance) << u << ", " << v;
        }
    }
    geom::Surface::destruct(made.surface);
}

TEST_P(StepSurfaces, HaveTheirNormalsOnTheSideThatIsSaid)
{
    SurfaceCase const & kind = GetParam();
    if (!kind.hasSameParameters)
        return;
    Handle(Geom_Surface) const surface = kind.make();
    step::SurfaceResult const made = step::makeSurface(surface, kind.range);
    ASSERT_NE(nullptr, made.surface);
    double const u = kind.range.u1 + (kind.range.u2 - kind.range.u1) * 0.4;
    double const v = kind.range.v1 + (kind.range.v2 - kind.range.v1) * 0.4;
    gp_Pnt point;
    gp_Vec du;
    gp_Vec dv;
    surface->D1(u, v, point, du, dv);
    double const side =
        normalOf(*made.surface, u, made.uv.vFactor * v + made.uv.vShift).Dot(du.Crossed(dv));
    EXPECT_EQ(kind.turned, side < 0);
    geom::Surface::destruct(made.surface);
}

Handle(Geom_BezierSurface) patch(bool rational)
{
    TColgp_Array2OfPnt points(1, 3, 1, 4);
    TColStd_Array2OfReal shares(1, 3, 1, 4);
    for (int i = 1; i <= 3; ++i) {
        for (int k = 1; k <= 4; ++k) {
            points.SetValue(i, k, {10.0 * i, 8.0 * k, i == 2 ? 5.0 + k : 0.5 * k});
            shares.SetValue(i, k, 1 + 0.25 * i * k);
        }
    }
    return rational ? new Geom_BezierSurface(points, shares) : new Geom_BezierSurface(points);
}

Handle(Geom_Surface) trimmed(Handle(Geom_Surface) const & surface, step::SurfaceRange const & to)
{
    return new Geom_RectangularTrimmedSurface(surface, to.u1, to.u2, to.v1, to.v2, true, true);
}

/// A spline that closes in u.
Handle(Geom_BSplineSurface) periodicSpline()
{
    Handle(Geom_BSplineSurface) const result = GeomConvert::SurfaceToBSplineSurface(
        trimmed(new Geom_CylindricalSurface(place(), 3), {0, 2 * M_PI, 0, 5}));
    result->SetUPeriodic();
    return result;
}

Handle(Geom_BezierCurve) meridian()
{
    TColgp_Array1OfPnt points(1, 4);
    double const places[][3] = {{3, 0, 0}, {5, 1, 2}, {4, 0, 4}, {6, -1, 7}};
    for (int i = 0; i < 4; ++i)
        points.SetValue(i + 1, {places[i][0], places[i][1], places[i][2]});
    return new Geom_BezierCurve(points);
}

Handle(Geom_BSplineCurve) splineMeridian()
{
    return GeomConvert::CurveToBSplineCurve(meridian());
}

gp_Ax1 const Axis({0, 0, 0}, {0, 0, 1});
/// A placement whose first axis runs away from the axis above.
gp_Ax2 const Beside({5, 0, 0}, {0, 1, 0}, {1, 0, 0});

Handle(Geom_Surface) composite()
{
    Handle(TColGeom_HArray2OfSurface) const grid = new TColGeom_HArray2OfSurface(1, 1, 1, 1);
    grid->SetValue(1, 1, patch(false));
    return new ShapeExtend_CompositeSurface(grid);
}

using geom::Surface;
constexpr step::SurfaceRange Flat = {-2, 3, 1, 4};
constexpr step::SurfaceRange Turn = {0, 2 * M_PI, -1, 4};
constexpr step::SurfaceRange Ball = {0, 2 * M_PI, -1.5, 1.5};
constexpr step::SurfaceRange Turns = {0, 2 * M_PI, 0, 2 * M_PI};
constexpr step::SurfaceRange Unit = {0, 1, 0, 1};

SurfaceCase const Surfaces[] = {
    {"Plane", [] { return new Geom_Plane(place()); }, Flat, Surface::Plane},
    {"LeftHandedPlane", [] { return new Geom_Plane(mirroredPlace()); }, Flat, Surface::Plane, "",
     false},
    {"Cylinder", [] { return new Geom_CylindricalSurface(place(), 3); }, Turn, Surface::Cylinder},
    {"LeftHandedCylinder", [] { return new Geom_CylindricalSurface(mirroredPlace(), 3); }, Turn,
     Surface::Cylinder, "left-handed cylinder as right-handed one, v turned", true},
    {"Cone", [] { return new Geom_ConicalSurface(place(), 0.5, 3); }, Turn, Surface::Cone},
    {"NarrowingCone", [] { return new Geom_ConicalSurface(place(), -0.25, 3); }, Turn,
     Surface::Cone},
    {"LeftHandedCone", [] { return new Geom_ConicalSurface(mirroredPlace(), 0.5, 3); }, Turn,
     Surface::Cone, "left-handed cone as right-handed one, v turned", true},
    {"Sphere", [] { return new Geom_SphericalSurface(place(), 3); }, Ball, Surface::Sphere},
    {"LeftHandedSphere", [] { return new Geom_SphericalSurface(mirroredPlace(), 3); }, Ball,
     Surface::Sphere, "left-handed sphere as right-handed one, v turned", true},
    {"Torus", [] { return new Geom_ToroidalSurface(place(), 5, 2); }, Turns, Surface::Torus},
    {"LeftHandedTorus", [] { return new Geom_ToroidalSurface(mirroredPlace(), 5, 2); }, Turns,
     Surface::Torus, "left-handed torus as right-handed one, v turned", true},
    {"Spline", [] { return GeomConvert::SurfaceToBSplineSurface(patch(false)); }, Unit,
     Surface::BSpline},
    {"RationalSpline", [] { return GeomConvert::SurfaceToBSplineSurface(patch(true)); }, Unit,
     Surface::BSpline},
    {"PeriodicSpline", [] { return periodicSpline(); }, {0, 2 * M_PI, 0, 5}, Surface::BSpline},
    {"Bezier", [] { return patch(false); }, Unit, Surface::BSpline,
     "Bezier surface as B-spline surface"},
    {"RationalBezier", [] { return patch(true); }, Unit, Surface::BSpline,
     "Bezier surface as B-spline surface"},
    {"Revolution",
     [] { return new Geom_SurfaceOfRevolution(splineMeridian(), Axis); },
     {0, 2 * M_PI, 0, 1},
     Surface::Revolution},
    {"RevolutionOfABezierCurve",
     [] { return new Geom_SurfaceOfRevolution(meridian(), Axis); },
     {0, 2 * M_PI, 0, 1},
     Surface::Revolution,
     "surface of revolution: Bezier curve as B-spline curve"},
    {"RevolutionOfACircle",
     [] { return new Geom_SurfaceOfRevolution(new Geom_Circle(Beside, 2), Axis); }, Turns,
     Surface::Revolution},
    {"RevolutionOfAParabola",
     [] { return new Geom_SurfaceOfRevolution(new Geom_Parabola(Beside, 2), Axis); },
     {0, 3, -2, 3},
     Surface::Revolution,
     "surface of revolution: parabola as B-spline curve"},
    {"RevolutionOfAHyperbola",
     [] { return new Geom_SurfaceOfRevolution(new Geom_Hyperbola(Beside, 2, 1), Axis); },
     {0, 3, -1, 1},
     Surface::Revolution,
     "surface of revolution: hyperbola as B-spline curve",
     false,
     false},
    {"Extrusion",
     [] {
         return new Geom_SurfaceOfLinearExtrusion(spline(false, false), {1, 1, 3});
     },
     {0, 3, -1, 2},
     Surface::LinearExtrusion},
    {"ExtrusionOfAnEllipse",
     [] {
         return new Geom_SurfaceOfLinearExtrusion(new Geom_Ellipse(place(), 4, 2), {0, 0, 1});
     },
     Turn, Surface::LinearExtrusion},
    {"ExtrusionOfAParabola",
     [] {
         return new Geom_SurfaceOfLinearExtrusion(new Geom_Parabola(place(), 2), {0, 0, 1});
     },
     {-2, 3, 0, 4},
     Surface::LinearExtrusion,
     "surface of linear extrusion: parabola as B-spline curve"},
    {"ExtrusionOfAHyperbola",
     [] {
         return new Geom_SurfaceOfLinearExtrusion(new Geom_Hyperbola(place(), 3, 2), {0, 0, 1});
     },
     {-1, 1, 0, 4},
     Surface::LinearExtrusion,
     "surface of linear extrusion: hyperbola as B-spline curve",
     false,
     false},
    {"Offset",
     [] { return new Geom_OffsetSurface(GeomConvert::SurfaceToBSplineSurface(patch(false)), 2); },
     {0.1, 0.9, 0.1, 0.9},
     Surface::Offset,
     "",
     false,
     true,
     Approximated},
    {"OffsetOfABezierSurface",
     [] { return new Geom_OffsetSurface(patch(false), -1.5); },
     {0.1, 0.9, 0.1, 0.9},
     Surface::Offset,
     "offset surface: Bezier surface as B-spline surface",
     false,
     true,
     Approximated},
    {"OffsetOfALeftHandedTorus",
     [] { return new Geom_OffsetSurface(new Geom_ToroidalSurface(mirroredPlace(), 5, 2), 0.5); },
     Turns, Surface::Offset, "offset surface: left-handed torus as right-handed one, v turned",
     true, true, Approximated},
    {"Trimmed",
     [] {
         return trimmed(new Geom_CylindricalSurface(place(), 3), {1, 2, 0, 5});
     },
     {1, 2, 0, 5},
     Surface::Cylinder},
    {"TrimmedExtrusionOfAParabola",
     [] {
         return trimmed(new Geom_SurfaceOfLinearExtrusion(new Geom_Parabola(place(), 2), {0, 0, 1}),
                        {-2, 3, 0, 4});
     },
     {-2, 3, 0, 4},
     Surface::LinearExtrusion,
     "surface of linear extrusion: parabola as B-spline curve"},
    {"Other", [] { return composite(); }, Unit, Surface::BSpline,
     "other surface approximated by a B-spline surface", false, true, Approximated},
};

INSTANTIATE_TEST_SUITE_P(Kinds, StepSurfaces, testing::ValuesIn(Surfaces), nameOf<SurfaceCase>);

struct UvCase
{
    char const * name;
    std::function<Handle(Geom2d_Curve)()> make;
    double first;
    double last;
    char const * changed = "";
    bool hasSameParameters = true;
    double tolerance = Exact;
};

void PrintTo(UvCase const & curve, std::ostream * stream)
{
    *stream << curve.name;
}

class StepUvCurves : public testing::TestWithParam<UvCase>
{
protected:
    /// As above, on a surface whose parameters follow `map`.
    static void expectSamePoints(step::UvMap const & map)
    {
        UvCase const & kind = GetParam();
        Handle(Geom2d_Curve) const curve = kind.make();
        step::UvCurveResult const made = step::makeUvCurve(curve, kind.first, kind.last, map);
        ASSERT_NE(nullptr, made.curve);
        EXPECT_EQ(kind.changed, made.changed);
        for (int i = 0; i <= Steps; ++i) {
            double const parameter = kind.first + (kind.last - kind.first) * i / Steps;
            gp_Pnt2d point = pointAt(*made.curve, parameter);
            point.SetY((point.Y() - map.vShift) / map.vFactor);
            bool const isSame = kind.hasSameParameters || i == 0 || i == Steps;
            double const distance =
                isSame ? point.Distance(curve->Value(parameter))
                       : Geom2dAPI_ProjectPointOnCurve(point, curve).LowerDistance();
            EXPECT_LE(distance, kind.tolerance) << "at " << parameter;
        }
        geom::UVCurve::destruct(made.curve);
    }
};

TEST_P(StepUvCurves, RunThroughTheSamePoints)
{
    expectSamePoints({});
}

TEST_P(StepUvCurves, FollowASurfaceWhoseSecondParameterIsTurned)
{
    expectSamePoints({true, -1, 2 * M_PI});
}

TColgp_Array1OfPnt2d uvPoles()
{
    TColgp_Array1OfPnt2d result(1, 5);
    TColgp_Array1OfPnt const points = poles();
    for (int i = 1; i <= 5; ++i)
        result.SetValue(i, {points(i).X(), points(i).Y()});
    return result;
}

Handle(Geom2d_BSplineCurve) uvSpline(bool rational, bool periodic)
{
    Knots const knots(periodic);
    if (rational)
        return new Geom2d_BSplineCurve(uvPoles(), weights(), knots.values, knots.counts, 3,
                                       periodic);
    return new Geom2d_BSplineCurve(uvPoles(), knots.values, knots.counts, 3, periodic);
}

gp_Ax2d const UvAxis({1, 2}, {3, 4});

UvCase const UvCurves[] = {
    {"Line",
     [] {
         return new Geom2d_Line({1, 2}, {3, 4});
     },
     -1, 6},
    {"Spline", [] { return uvSpline(false, false); }, 0, 3},
    {"RationalSpline", [] { return uvSpline(true, false); }, 0, 3},
    {"StretchOfASpline", [] { return uvSpline(true, false); }, 0.5, 2},
    {"PeriodicSpline", [] { return uvSpline(false, true); }, 0, 6},
    {"StretchOfAPeriodicSpline", [] { return uvSpline(false, true); }, 1.5, 4.25},
    {"Trimmed", [] { return new Geom2d_TrimmedCurve(uvSpline(false, false), 0.5, 2.5); }, 1, 2},
    {"Bezier", [] { return new Geom2d_BezierCurve(uvPoles()); }, 0, 1,
     "Bezier curve as B-spline curve"},
    {"StretchOfABezierCurve", [] { return new Geom2d_BezierCurve(uvPoles()); }, 0.25, 0.75,
     "Bezier curve as B-spline curve"},
    {"Circle", [] { return new Geom2d_Circle(UvAxis, 2); }, 0.5, 2, "conic as B-spline curve",
     false},
    {"FullCircle", [] { return new Geom2d_Circle(UvAxis, 2); }, 0, 2 * M_PI,
     "conic as B-spline curve", false},
    {"Ellipse", [] { return new Geom2d_Ellipse(UvAxis, 4, 2); }, 0.5, 5, "conic as B-spline curve",
     false},
    {"Parabola", [] { return new Geom2d_Parabola(UvAxis, 2); }, -2, 3, "conic as B-spline curve",
     false},
    {"Hyperbola", [] { return new Geom2d_Hyperbola(UvAxis, 3, 2); }, -1, 1.5,
     "conic as B-spline curve", false},
    {"Offset", [] { return new Geom2d_OffsetCurve(uvSpline(false, false), 0.125); }, 0, 3,
     "other curve approximated by a B-spline curve", true, Approximated},
};

INSTANTIATE_TEST_SUITE_P(Kinds, StepUvCurves, testing::ValuesIn(UvCurves), nameOf<UvCase>);

} // namespace
