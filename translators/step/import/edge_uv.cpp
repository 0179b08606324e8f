#include "import/edge_uv.h"

#include <BRep_CurveRepresentation.hxx>
#include <BRep_ListIteratorOfListOfCurveRepresentation.hxx>
#include <BRep_TEdge.hxx>
#include <BRep_Tool.hxx>
#include <ElSLib.hxx>
#include <Geom2d_Circle.hxx>
#include <Geom2d_Line.hxx>
#include <Geom_Circle.hxx>
#include <Geom_Line.hxx>
#include <Geom_Plane.hxx>
#include <Precision.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>

namespace step {

namespace {

gp_Pnt2d flat(gp_Pnt const & point, gp_Ax3 const & plane)
{
    double u = 0;
    double v = 0;
    ElSLib::PlaneParameters(plane, point, u, v);
    return {u, v};
}

gp_Dir2d flat(gp_Dir const & direction, gp_Ax3 const & plane)
{
    return {direction.Dot(plane.XDirection()), direction.Dot(plane.YDirection())};
}

/// Null for other curves, and for those that do not lie parallel to the plane.
Handle(Geom2d_Curve) flattened(Handle(Geom_Curve) const & curve, gp_Ax3 const & plane)
{
    if (auto const line = Handle(Geom_Line)::DownCast(curve)) {
        gp_Ax1 const & axis = line->Position();
        if (!axis.Direction().IsNormal(plane.Direction(), Precision::Angular()))
            return nullptr;
        return new Geom2d_Line(flat(axis.Location(), plane), flat(axis.Direction(), plane));
    }
    if (auto const circle = Handle(Geom_Circle)::DownCast(curve)) {
        gp_Ax2 const & axes = circle->Position();
        if (!axes.Direction().IsParallel(plane.Direction(), Precision::Angular()))
            return nullptr;
        return new Geom2d_Circle(gp_Ax22d(flat(axes.Location(), plane),
                                          flat(axes.XDirection(), plane),
                                          flat(axes.YDirection(), plane)),
                                 circle->Radius());
    }
    return nullptr;
}

bool hasOwnCurveOn(Handle(Geom_Surface) const & surface, TopLoc_Location const & location,
                   TopoDS_Edge const & edge)
{
    TopLoc_Location const relative = location.Predivided(edge.Location());
    auto const & curves = Handle(BRep_TEdge)::DownCast(edge.TShape())->Curves();
    for (BRep_ListIteratorOfListOfCurveRepresentation curve(curves); curve.More(); curve.Next()) {
        if (curve.Value()->IsCurveOnSurface(surface, relative))
            return true;
    }
    return false;
}

} // namespace

Handle(Geom2d_Curve)
    uvCurveOf(TopoDS_Edge const & edge, TopoDS_Face const & face, double & first, double & last)
{
    TopLoc_Location faceLocation;
    auto const & surface = BRep_Tool::Surface(face, faceLocation);
    if (auto const plane = Handle(Geom_Plane)::DownCast(surface)) {
        TopLoc_Location curveLocation;
        auto const & curve = BRep_Tool::Curve(edge, curveLocation, first, last);
        if (!curve.IsNull() && curveLocation == faceLocation &&
            !hasOwnCurveOn(surface, faceLocation, edge)) {
            auto const result = flattened(curve, plane->Position());
            if (!result.IsNull())
                return result;
        }
    }
    return BRep_Tool::CurveOnSurface(edge, face, first, last);
}

} // namespace step
