#include "build_shapes.h"
#include "parts.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <GC_MakeArcOfCircle.hxx>
#include <GeomAPI_PointsToBSplineSurface.hxx>
#include <GeomConvert_ApproxCurve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_BezierCurve.hxx>
#include <Geom_BezierSurface.hxx>
#include <Geom_Circle.hxx>
#include <Geom_Line.hxx>
#include <Geom_OffsetCurve.hxx>
#include <Geom_OffsetSurface.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <Precision.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <gp_Circ.hxx>
#include <gp_Lin.hxx>

namespace vise {

namespace {

constexpr double Tolerance = 1e-7;

/// What of the slide's back the plate covers, and how wide and thick it is. It ends before the back
/// bends the other way: the kernel's mesher, which looks at the middle, takes an S for a straight
/// line.
constexpr double From = 0.1;
constexpr double To = 0.45;
constexpr double HalfPlate = 24;
constexpr double Thickness = 1.5;

Handle(Geom_BezierSurface) bentSurface(Geom_BezierCurve const & profile)
{
    TColgp_Array2OfPnt poles(1, profile.NbPoles(), 1, 2);
    for (int i = 1; i <= profile.NbPoles(); ++i) {
        poles(i, 1) = profile.Pole(i).Translated(gp_Vec(0, -HalfPlate, 0));
        poles(i, 2) = profile.Pole(i).Translated(gp_Vec(0, HalfPlate, 0));
    }
    return new Geom_BezierSurface(poles);
}

/// One long side: plane, between the bent edge below and its offset above.
TopoDS_Face longSide(Handle(Geom_Curve) const & below, Handle(Geom_Curve) const & above)
{
    GeomConvert_ApproxCurve const close(new Geom_TrimmedCurve(above, From, To), 1e-9, GeomAbs_C2,
                                        100, 9);
    return face(wire({BRepBuilderAPI_MakeEdge(below, From, To).Edge(),
                      line(below->Value(To), above->Value(To)), edge(close.Curve()),
                      line(above->Value(From), below->Value(From))}));
}

TopoDS_Face shortSide(Geom_Curve const & below, Geom_Curve const & above, double parameter)
{
    gp_Vec const left(0, -HalfPlate, 0);
    gp_Vec const right(0, HalfPlate, 0);
    gp_Pnt const low = below.Value(parameter);
    gp_Pnt const high = above.Value(parameter);
    return polygon({low.Translated(left), low.Translated(right), high.Translated(right),
                    high.Translated(left)});
}

TopoDS_Face faceOn(TopoDS_Shape const & shape, Handle(Standard_Type) const & kind)
{
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) {
        TopoDS_Face const & found = TopoDS::Face(face.Current());
        if (BRep_Tool::Surface(found)->IsKind(kind))
            return found;
    }
    throw BuildFailure("a face has gone");
}

/// The edge between the two places of `curve` at which the plate ends.
TopoDS_Edge edgeOn(TopoDS_Shape const & shape, Handle(Geom_Curve) const & curve)
{
    auto const isEnd = [&](gp_Pnt const & point) {
        return point.Distance(curve->Value(From)) < 1e-5 || point.Distance(curve->Value(To)) < 1e-5;
    };
    for (TopoDS_Edge const & candidate : edgesOf(shape)) {
        if (isEnd(startOf(candidate)) && isEnd(endOf(candidate)))
            return candidate;
    }
    throw BuildFailure("an edge has gone");
}

} // namespace

NamePlate namePlate()
{
    auto const profile = Handle(Geom_BezierCurve)::DownCast(backOfSlide());
    Handle(Geom_BezierSurface) const under = bentSurface(*profile);
    // Up is against the surface's normal, because the profile runs against x.
    Handle(Geom_RectangularTrimmedSurface) const covered =
        new Geom_RectangularTrimmedSurface(under, From, To, 0.0, 1.0);
    Handle(Geom_OffsetSurface) const over = new Geom_OffsetSurface(covered, -Thickness);

    Handle(Geom_OffsetCurve) const middle =
        new Geom_OffsetCurve(profile, -Thickness, gp_Dir(0, 1, 0));
    std::vector<TopoDS_Face> faces = {BRepBuilderAPI_MakeFace(over, Tolerance).Face(),
                                      BRepBuilderAPI_MakeFace(covered, Tolerance).Face(),
                                      shortSide(*profile, *middle, From),
                                      shortSide(*profile, *middle, To)};
    std::vector<Handle(Geom_Curve)> offsets;
    for (double const y : {-HalfPlate, HalfPlate}) {
        gp_Vec const across(0, y, 0);
        auto const translated = [&](Geom_Curve const & curve) {
            return Handle(Geom_Curve)::DownCast(curve.Translated(across));
        };
        offsets.push_back(translated(*middle));
        faces.push_back(longSide(translated(*profile), offsets.back()));
    }

    NamePlate plate;
    plate.shape = checked(solid(faces), "the name plate is not valid");
    plate.top = faceOn(plate.shape, STANDARD_TYPE(Geom_OffsetSurface));
    for (Handle(Geom_Curve) const & offset : offsets)
        plate.offsetEdges.push_back({edgeOn(plate.shape, offset), offset});
    return plate;
}

TopoDS_Shape anvilPlate()
{
    // Highest in its middle. Each rim stays in its plane.
    constexpr double Bottom = 62;
    constexpr double XFrom = 138;
    constexpr double XTo = 162;
    constexpr double HalfWidth = 26;
    constexpr int Count = 6;
    double const rise[Count] = {0, 0.6, 1, 1, 0.6, 0};
    TColgp_Array2OfPnt poles(1, Count, 1, Count);
    for (int i = 0; i < Count; ++i) {
        for (int k = 0; k < Count; ++k)
            poles(i + 1, k + 1) = {XFrom + i * (XTo - XFrom) / (Count - 1),
                                   -HalfWidth + k * 2 * HalfWidth / (Count - 1),
                                   Bottom + 4 + rise[i] + rise[k] + 2 * rise[i] * rise[k]};
    }
    TColStd_Array1OfReal knots(1, 4);
    TColStd_Array1OfInteger multiplicities(1, 4);
    for (int i = 1; i <= 4; ++i) {
        knots(i) = i - 1;
        multiplicities(i) = i == 1 || i == 4 ? 4 : 1;
    }
    Handle(Geom_BSplineSurface) const top =
        new Geom_BSplineSurface(poles, knots, knots, multiplicities, multiplicities, 3, 3);

    std::vector<TopoDS_Face> faces = {BRepBuilderAPI_MakeFace(top, Tolerance).Face(),
                                      polygon({{XFrom, -HalfWidth, Bottom},
                                               {XTo, -HalfWidth, Bottom},
                                               {XTo, HalfWidth, Bottom},
                                               {XFrom, HalfWidth, Bottom}})};
    for (Handle(Geom_Curve) const & rim :
         {top->UIso(0), top->UIso(3), top->VIso(0), top->VIso(3)}) {
        gp_Pnt const first = rim->Value(0);
        gp_Pnt const last = rim->Value(3);
        gp_Pnt const below(first.X(), first.Y(), Bottom);
        gp_Pnt const belowLast(last.X(), last.Y(), Bottom);
        faces.push_back(face(
            wire({edge(rim), line(last, belowLast), line(belowLast, below), line(below, first)})));
    }
    return checked(solid(faces), "the anvil plate is not valid");
}

TopoDS_Shape splashGuard()
{
    gp_Pnt const foot(185, -36, 4);
    gp_Pnt const bend(185, -36, 24);
    gp_Pnt const middle(187.92893218813452, -36, 31.071067811865476);
    gp_Pnt const lip(195, -36, 34);
    gp_Pnt const end(199, -36, 34);
    Handle(Geom_TrimmedCurve) const arc = GC_MakeArcOfCircle(bend, middle, lip).Value();
    TopoDS_Wire const profile = wire({line(foot, bend), edge(arc), line(lip, end)});
    return checked(extruded(profile, gp_Vec(0, 72, 0)), "the splash guard is not valid");
}

TopoDS_Shape constructionLines()
{
    gp_Pnt const middle(-48, 0, SpindleHeight);
    gp_Dir const alongX(1, 0, 0);
    Handle(Geom_Line) const axis = new Geom_Line(middle, alongX);
    Handle(Geom_Circle) const round = new Geom_Circle(gp_Ax2(middle, alongX), 14);
    BRep_Builder builder;
    TopoDS_Compound both;
    builder.MakeCompound(both);
    builder.Add(both, edge(new Geom_TrimmedCurve(axis, 0, 90)));
    builder.Add(both, edge(new Geom_TrimmedCurve(round, 0.5, 5.5)));
    return both;
}

} // namespace vise
