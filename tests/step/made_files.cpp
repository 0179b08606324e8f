#include "step/made_files.h"

#include <BRepAlgoAPI_Common.hxx>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <GC_MakeArcOfParabola.hxx>
#include <GeomAPI_PointsToBSpline.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BezierSurface.hxx>
#include <Geom_OffsetSurface.hxx>
#include <Precision.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>
#include <fstream>
#include <gp_Elips.hxx>
#include <gp_Parab.hxx>
#include <iterator>

namespace tests {

namespace {

Handle(Geom_BSplineCurve) wave(bool alongZ)
{
    double const heights[] = {2, 3, 2.5, 4, 3};
    TColgp_Array1OfPnt points(1, 5);
    for (int i = 0; i < 5; ++i)
        points.SetValue(i + 1,
                        alongZ ? gp_Pnt(heights[i], 0, 2 * i) : gp_Pnt(2 * i, heights[i], 0));
    return GeomAPI_PointsToBSpline(points).Curve();
}

Handle(Geom_BezierSurface) patch()
{
    TColgp_Array2OfPnt poles(1, 3, 1, 4);
    for (int i = 1; i <= 3; ++i) {
        for (int k = 1; k <= 4; ++k)
            poles.SetValue(i, k, {10.0 * i, 8.0 * k, i == 2 ? 5.0 + k : 0.0});
    }
    return new Geom_BezierSurface(poles);
}

} // namespace

std::string contentOf(std::string const & path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void writeBrep(TopoDS_Shape const & shape, std::string const & path)
{
    BRepTools::Write(shape, path.c_str());
}

TopoDS_Shape seamedCylinder()
{
    return BRepPrimAPI_MakeCylinder(3, 20).Shape();
}

TopoDS_Shape sphere()
{
    return BRepPrimAPI_MakeSphere(gp_Pnt(1, 2, 3), 7).Shape();
}

TopoDS_Shape torus()
{
    return BRepPrimAPI_MakeTorus(10, 3).Shape();
}

TopoDS_Shape coneWithHyperbola()
{
    // A plane beside the axis cuts a cone along a hyperbola.
    TopoDS_Shape const cone = BRepPrimAPI_MakeCone(10, 2, 20).Shape();
    return BRepAlgoAPI_Common(cone, BRepPrimAPI_MakeBox(gp_Pnt(-20, 3, -5), 40, 40, 40).Shape())
        .Shape();
}

TopoDS_Shape parabolicPrism()
{
    gp_Parab const parabola(gp_Ax2({0, 0, 0}, {0, 0, 1}), 2);
    TopoDS_Edge const arc = BRepBuilderAPI_MakeEdge(parabola, -6, 6).Edge();
    TopoDS_Edge const chord =
        BRepBuilderAPI_MakeEdge(gp_Pnt(36.0 / 8, 6, 0), gp_Pnt(36.0 / 8, -6, 0)).Edge();
    TopoDS_Face const face =
        BRepBuilderAPI_MakeFace(BRepBuilderAPI_MakeWire(arc, chord).Wire()).Face();
    return BRepPrimAPI_MakePrism(face, gp_Vec(0, 0, 4)).Shape();
}

TopoDS_Shape ellipticPrism()
{
    gp_Elips const ellipse(gp_Ax2({1, 1, 0}, {0, 0, 1}), 6, 2);
    TopoDS_Edge const edge = BRepBuilderAPI_MakeEdge(ellipse).Edge();
    TopoDS_Face const face = BRepBuilderAPI_MakeFace(BRepBuilderAPI_MakeWire(edge).Wire()).Face();
    return BRepPrimAPI_MakePrism(face, gp_Vec(0, 0, 4)).Shape();
}

TopoDS_Shape boxWithVoid()
{
    return BRepAlgoAPI_Cut(BRepPrimAPI_MakeBox(10, 20, 30).Shape(),
                           BRepPrimAPI_MakeBox(gp_Pnt(3, 3, 3), 4, 4, 4).Shape())
        .Shape();
}

TopoDS_Shape insideOutBox()
{
    return BRepPrimAPI_MakeBox(10, 20, 30).Shape().Reversed();
}

TopoDS_Shape twoSolids()
{
    TopoDS_Compound compound;
    BRep_Builder builder;
    builder.MakeCompound(compound);
    builder.Add(compound, BRepPrimAPI_MakeBox(10, 20, 30).Shape());
    builder.Add(compound, BRepPrimAPI_MakeBox(gp_Pnt(20, 0, 0), 5, 6, 7).Shape());
    return compound;
}

TopoDS_Shape edgeAndPoint()
{
    TopoDS_Compound compound;
    BRep_Builder builder;
    builder.MakeCompound(compound);
    builder.Add(compound, BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), gp_Pnt(1, 2, 3)).Edge());
    TopoDS_Vertex vertex;
    builder.MakeVertex(vertex, {4, 5, 6}, Precision::Confusion());
    builder.Add(compound, vertex);
    return compound;
}

TopoDS_Shape bezierPatch()
{
    return BRepBuilderAPI_MakeFace(patch(), Precision::Confusion()).Shape();
}

TopoDS_Shape offsetPatch()
{
    return BRepBuilderAPI_MakeFace(new Geom_OffsetSurface(patch(), 2), Precision::Confusion())
        .Shape();
}

TopoDS_Shape extrudedSpline()
{
    return BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeEdge(wave(false)).Edge(), gp_Vec(0, 0, 5))
        .Shape();
}

TopoDS_Shape revolvedSpline()
{
    return BRepPrimAPI_MakeRevol(BRepBuilderAPI_MakeEdge(wave(true)).Edge(),
                                 gp_Ax1({0, 0, 0}, {0, 0, 1}))
        .Shape();
}

TopoDS_Shape mirrored(TopoDS_Shape const & shape)
{
    gp_Trsf mirror;
    mirror.SetMirror(gp_Ax2({0, 0, 0}, {1, 0, 0}));
    return BRepBuilderAPI_Transform(shape, mirror, true).Shape();
}

} // namespace tests
