#include "build_shapes.h"
#include "parts.h"

#include <GeomAPI_PointsToBSpline.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BezierCurve.hxx>
#include <Geom_Parabola.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <cmath>
#include <gp_Parab.hxx>
#include <vector>

namespace vise {

namespace {

constexpr double FootHeight = 14;
constexpr double SlidewayTop = 40;
constexpr double JawTop = 78;
constexpr double BlockTop = 62;
constexpr double HalfJaw = 40;
constexpr double HalfSlideway = 28;

gp_Dir const alongX(1, 0, 0);
gp_Dir const alongY(0, 1, 0);
gp_Dir const alongZ(0, 0, 1);

TopoDS_Shape foot()
{
    TopoDS_Shape const plate = box({-22, -46, 0}, {184, 46, FootHeight});
    TopoDS_Shape const round =
        rounded(plate,
                edgesWhere(plate,
                           [](TopoDS_Edge const & edge) {
                               return std::abs(startOf(edge).Z() - endOf(edge).Z()) > 1;
                           }),
                12);
    // Its corners become tori.
    TopoDS_Shape result = rounded(
        round,
        edgesWhere(round, [](TopoDS_Edge const & edge) { return liesAt(edge, 3, FootHeight); }), 3);
    for (double const x : {-6.0, 170.0}) {
        for (double const y : {-32.0, 32.0})
            result = cut(result, cylinder({{x, y, -1}, alongZ}, 5.5, FootHeight + 2));
    }
    return result;
}

TopoDS_Shape slideway()
{
    // The chip opening is a parabola with its vertex on top.
    constexpr double Vertex = 34;
    constexpr double HalfWidth = 26;
    constexpr double Focal = HalfWidth * HalfWidth / (4 * (Vertex - FootHeight));
    constexpr double Side = -HalfSlideway;
    gp_Parab const parabola(gp_Ax2({79, Side, Vertex}, alongY, gp_Dir(0, 0, -1)), Focal);
    Handle(Geom_TrimmedCurve) const arc =
        new Geom_TrimmedCurve(new Geom_Parabola(parabola), -HalfWidth, HalfWidth);
    // From the arc's front end round. The block behind the jaw carries the anvil plate, and slants
    // down to the back.
    std::vector<TopoDS_Edge> outline = {edge(arc)};
    gp_Pnt last = arc->EndPoint();
    for (gp_Pnt const & corner :
         {gp_Pnt(0, Side, FootHeight), gp_Pnt(0, Side, SlidewayTop), gp_Pnt(136, Side, SlidewayTop),
          gp_Pnt(136, Side, BlockTop), gp_Pnt(164, Side, BlockTop), gp_Pnt(176, Side, FootHeight),
          arc->StartPoint()}) {
        outline.push_back(line(last, corner));
        last = corner;
    }
    return extruded(face(wire(outline)), gp_Vec(0, 2 * HalfSlideway, 0));
}

TopoDS_Shape fixedJaw()
{
    TColgp_Array1OfPnt points(1, 5);
    points(1) = {118, -HalfJaw, JawTop};
    points(2) = {122, -HalfJaw, 75};
    points(3) = {126, -HalfJaw, 66};
    points(4) = {131, -HalfJaw, 58};
    points(5) = {136, -HalfJaw, 54};
    TopoDS_Edge const back = edge(GeomAPI_PointsToBSpline(points).Curve());
    gp_Pnt const backFoot(136, -HalfJaw, SlidewayTop);
    gp_Pnt const frontFoot(FixedJaw, -HalfJaw, SlidewayTop);
    gp_Pnt const frontTop(FixedJaw, -HalfJaw, JawTop);
    TopoDS_Face const profile =
        face(wire({back, line(points(5), backFoot), line(backFoot, frontFoot),
                   line(frontFoot, frontTop), line(frontTop, points(1))}));
    return extruded(profile, gp_Vec(0, 2 * HalfJaw, 0));
}

/// What carries the spindle's thread.
TopoDS_Shape bridge()
{
    constexpr double HalfBridge = 20;
    gp_Ax1 const axis({0, 0, SpindleHeight}, alongX);
    TopoDS_Shape const post =
        box({0, -HalfBridge, SlidewayTop - 5}, {14, HalfBridge, SpindleHeight});
    TopoDS_Shape const head = fused(post, cylinder(axis, HalfBridge, 14));
    TopoDS_Shape const open = cut(head, cylinder({{-1, 0, SpindleHeight}, alongX}, 7.05, 16));
    return cut(open, cone({{-1, 0, SpindleHeight}, alongX}, 9.5, 6.5, 3));
}

TopoDS_Shape backWithHoles(TopoDS_Shape const & casting)
{
    // Along the length of the vise through the slanting back: its rim is an ellipse.
    TopoDS_Shape result = cut(casting, cylinder({{150, 0, 34}, alongX}, 7, 40));
    for (double const y : {-ScrewSpacing, ScrewSpacing})
        result =
            cut(result, cylinder({{FixedJaw - 1, y, PlateBottom + ScrewHeight}, alongX}, 2.6, 12));
    return result;
}

} // namespace

TopoDS_Shape base()
{
    TopoDS_Shape const casting = fused(fused(fused(foot(), slideway()), fixedJaw()), bridge());
    return checked(backWithHoles(casting), "the base is not valid");
}

Handle(Geom_Curve) backOfSlide()
{
    TColgp_Array1OfPnt poles(1, 4);
    poles(1) = {54, 0, JawTop};
    poles(2) = {40, 0, JawTop};
    poles(3) = {40, 0, 63};
    poles(4) = {26, 0, 63};
    return new Geom_BezierCurve(poles);
}

TopoDS_Shape slide()
{
    Handle(Geom_Curve) const back =
        Handle(Geom_Curve)::DownCast(backOfSlide()->Translated(gp_Vec(0, -HalfJaw, 0)));
    gp_Pnt const top = back->Value(0);
    gp_Pnt const low = back->Value(1);
    gp_Pnt const foot(low.X(), -HalfJaw, SlidewayTop);
    gp_Pnt const front(MovableJaw, -HalfJaw, SlidewayTop);
    gp_Pnt const frontTop(MovableJaw, -HalfJaw, JawTop);
    TopoDS_Face const profile = face(wire({edge(back), line(low, foot), line(foot, front),
                                           line(front, frontTop), line(frontTop, top)}));
    TopoDS_Shape result = extruded(profile, gp_Vec(0, 2 * HalfJaw, 0));
    // The spindle's point pushes here.
    result = cut(result, cone({{low.X(), 0, SpindleHeight}, alongX}, 5, 0, 5));
    for (double const y : {-ScrewSpacing, ScrewSpacing})
        result = cut(result,
                     cylinder({{MovableJaw - 11, y, PlateBottom + ScrewHeight}, alongX}, 2.6, 12));
    return checked(result, "the slide is not valid");
}

TopoDS_Shape leftRail()
{
    // An L that grips below the slideway's edge; not the same at both ends.
    TopoDS_Face const profile = polygon({{26, -40, 24},
                                         {26, -28.5, 24},
                                         {26, -28.5, SlidewayTop},
                                         {26, -36, SlidewayTop},
                                         {26, -40, 34}});
    TopoDS_Shape result = extruded(profile, gp_Vec(36, 0, 0));
    result = cut(
        result, extruded(polygon({{26, -41, 23}, {34, -41, 23}, {26, -41, 33}}), gp_Vec(0, 14, 0)));
    result = cut(result, cylinder({{54, -50, 30}, alongY}, 2.5, 30));
    return checked(cut(result, cone({{54, -40, 30}, alongY}, 5, 2.5, 2.5)),
                   "the rail is not valid");
}

TopoDS_Shape rightRail()
{
    // A location of the kernel is never a mirror image, nor is a placement in a STEP file: what an
    // application mirrors becomes a part of its own. The kernel keeps the mirrored surfaces in
    // left-handed frames, and turns them round while it writes.
    gp_Trsf mirror;
    mirror.SetMirror(gp_Ax2({0, 0, 0}, alongY));
    return checked(moved(leftRail(), mirror), "the mirrored rail is not valid");
}

} // namespace vise
