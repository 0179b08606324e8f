#include "build_shapes.h"

#include <BRepAlgoAPI_Common.hxx>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeSolid.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_Sewing.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepLib.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRep_Tool.hxx>
#include <Precision.hxx>
#include <ShapeUpgrade_UnifySameDomain.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Solid.hxx>
#include <cmath>

namespace vise {

namespace {

gp_Ax2 frameOf(gp_Ax1 const & axis)
{
    return {axis.Location(), axis.Direction()};
}

/// Booleans leave faces that lie on one surface apart, and their result in a compound.
TopoDS_Shape tidied(TopoDS_Shape const & shape)
{
    ShapeUpgrade_UnifySameDomain unify(shape, true, true, false);
    unify.Build();
    TopTools_IndexedMapOfShape solids;
    TopExp::MapShapes(unify.Shape(), TopAbs_SOLID, solids);
    if (solids.Extent() != 1)
        throw BuildFailure("a boolean operation did not give one solid");
    return solids(1);
}

} // namespace

TopoDS_Shape box(gp_Pnt const & low, gp_Pnt const & high)
{
    return BRepPrimAPI_MakeBox(low, high).Solid();
}

TopoDS_Shape cylinder(gp_Ax1 const & axis, double radius, double length)
{
    return BRepPrimAPI_MakeCylinder(frameOf(axis), radius, length).Solid();
}

TopoDS_Shape cone(gp_Ax1 const & axis, double first, double last, double length)
{
    return BRepPrimAPI_MakeCone(frameOf(axis), first, last, length).Solid();
}

TopoDS_Shape fused(TopoDS_Shape const & first, TopoDS_Shape const & second)
{
    return tidied(BRepAlgoAPI_Fuse(first, second).Shape());
}

TopoDS_Shape cut(TopoDS_Shape const & from, TopoDS_Shape const & tool)
{
    return tidied(BRepAlgoAPI_Cut(from, tool).Shape());
}

TopoDS_Shape common(TopoDS_Shape const & first, TopoDS_Shape const & second)
{
    return tidied(BRepAlgoAPI_Common(first, second).Shape());
}

std::vector<TopoDS_Edge> edgesOf(TopoDS_Shape const & shape)
{
    TopTools_IndexedMapOfShape found;
    TopExp::MapShapes(shape, TopAbs_EDGE, found);
    std::vector<TopoDS_Edge> result;
    for (int i = 1; i <= found.Extent(); ++i)
        result.push_back(TopoDS::Edge(found(i)));
    return result;
}

TopoDS_Shape rounded(TopoDS_Shape const & shape, std::vector<TopoDS_Edge> const & edges,
                     double radius)
{
    BRepFilletAPI_MakeFillet fillet(shape);
    for (TopoDS_Edge const & rim : edges)
        fillet.Add(radius, rim);
    fillet.Build();
    if (!fillet.IsDone())
        throw BuildFailure("an edge could not be rounded off");
    TopTools_IndexedMapOfShape solids;
    TopExp::MapShapes(fillet.Shape(), TopAbs_SOLID, solids);
    if (solids.Extent() != 1)
        throw BuildFailure("rounding off did not give one solid");
    return solids(1);
}

gp_Pnt startOf(TopoDS_Edge const & edge)
{
    return BRep_Tool::Pnt(TopExp::FirstVertex(edge));
}

gp_Pnt endOf(TopoDS_Edge const & edge)
{
    return BRep_Tool::Pnt(TopExp::LastVertex(edge));
}

bool liesAt(TopoDS_Edge const & edge, int coordinate, double value)
{
    return std::abs(startOf(edge).Coord(coordinate) - value) < Precision::Confusion() &&
           std::abs(endOf(edge).Coord(coordinate) - value) < Precision::Confusion();
}

TopoDS_Edge line(gp_Pnt const & from, gp_Pnt const & to)
{
    return BRepBuilderAPI_MakeEdge(from, to).Edge();
}

TopoDS_Edge edge(Handle(Geom_Curve) const & curve)
{
    return BRepBuilderAPI_MakeEdge(curve).Edge();
}

TopoDS_Wire wire(std::vector<TopoDS_Edge> const & edges)
{
    BRepBuilderAPI_MakeWire result;
    for (TopoDS_Edge const & next : edges)
        result.Add(next);
    if (!result.IsDone())
        throw BuildFailure("edges do not fit together");
    return result.Wire();
}

TopoDS_Face face(TopoDS_Wire const & outline)
{
    BRepBuilderAPI_MakeFace result(outline, true);
    if (!result.IsDone())
        throw BuildFailure("an outline is not plane");
    return result.Face();
}

TopoDS_Face polygon(std::vector<gp_Pnt> const & corners)
{
    BRepBuilderAPI_MakePolygon outline;
    for (gp_Pnt const & corner : corners)
        outline.Add(corner);
    outline.Close();
    return face(outline.Wire());
}

TopoDS_Shape extruded(TopoDS_Shape const & shape, gp_Vec const & along)
{
    return BRepPrimAPI_MakePrism(shape, along).Shape();
}

TopoDS_Shape revolved(TopoDS_Shape const & shape, gp_Ax1 const & axis)
{
    return BRepPrimAPI_MakeRevol(shape, axis).Shape();
}

TopoDS_Shape solid(std::vector<TopoDS_Face> const & faces)
{
    BRepBuilderAPI_Sewing sewing(1e-6);
    for (TopoDS_Face const & side : faces)
        sewing.Add(side);
    sewing.Perform();
    if (sewing.SewedShape().ShapeType() != TopAbs_SHELL)
        throw BuildFailure("faces do not fit together");
    TopoDS_Solid result = BRepBuilderAPI_MakeSolid(TopoDS::Shell(sewing.SewedShape())).Solid();
    BRepLib::OrientClosedSolid(result);
    return result;
}

gp_Trsf shift(double x, double y, double z)
{
    gp_Trsf result;
    result.SetTranslation(gp_Vec(x, y, z));
    return result;
}

gp_Trsf turn(gp_Ax1 const & axis, double degrees)
{
    gp_Trsf result;
    result.SetRotation(axis, degrees * M_PI / 180);
    return result;
}

TopoDS_Shape moved(TopoDS_Shape const & shape, gp_Trsf const & transform)
{
    return BRepBuilderAPI_Transform(shape, transform, true).Shape();
}

TopoDS_Shape checked(TopoDS_Shape const & shape, char const * what)
{
    if (shape.IsNull() || !BRepCheck_Analyzer(shape).IsValid())
        throw BuildFailure(what);
    return shape;
}

} // namespace vise
