#include "import/edge_uv.h"
#include "step/made_files.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_Circle.hxx>
#include <Geom2d_Curve.hxx>
#include <Geom2d_Line.hxx>
#include <Geom_Plane.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Trsf.hxx>
#include <gtest/gtest.h>

namespace {

/// Calls `look` with each edge of each face.
template <class Look> void forEachFin(TopoDS_Shape const & shape, Look look)
{
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) {
        for (TopExp_Explorer edge(face.Current(), TopAbs_EDGE); edge.More(); edge.Next())
            look(TopoDS::Edge(edge.Current()), TopoDS::Face(face.Current()));
    }
}

/// Shapes that the kernel makes hold curves for planes, too; those from files do not.
TopoDS_Shape withoutCurvesOnPlanes(TopoDS_Shape const & shape)
{
    forEachFin(shape, [](TopoDS_Edge const & edge, TopoDS_Face const & face) {
        if (!Handle(Geom_Plane)::DownCast(BRep_Tool::Surface(face)).IsNull())
            BRep_Builder().UpdateEdge(edge, Handle(Geom2d_Curve)(), face,
                                      BRep_Tool::Tolerance(edge));
    });
    return shape;
}

TopoDS_Shape box()
{
    return withoutCurvesOnPlanes(BRepPrimAPI_MakeBox(1, 2, 3).Shape());
}

TopoDS_Shape cylinder()
{
    return withoutCurvesOnPlanes(tests::seamedCylinder());
}

/// How many edges of the shape have a curve of the type `Form` on their face. Each must run as the
/// kernel's does.
template <class Form> int countOf(TopoDS_Shape const & shape)
{
    int count = 0;
    forEachFin(shape, [&](TopoDS_Edge const & edge, TopoDS_Face const & face) {
        double first = 0;
        double last = 0;
        double kernelFirst = 0;
        double kernelLast = 0;
        auto const made = step::uvCurveOf(edge, face, first, last);
        auto const kernel = BRep_Tool::CurveOnSurface(edge, face, kernelFirst, kernelLast);
        ASSERT_EQ(made.IsNull(), kernel.IsNull());
        EXPECT_EQ(first, kernelFirst);
        EXPECT_EQ(last, kernelLast);
        for (int i = 0; i <= 8; ++i) {
            double const at = first + i * (last - first) / 8;
            EXPECT_LT(made->Value(at).Distance(kernel->Value(at)), 1e-12) << at;
        }
        count += made->IsKind(STANDARD_TYPE(Form)) ? 1 : 0;
    });
    return count;
}

/// `twice`: by its own place and by that of what holds it.
TopoDS_Shape placed(TopoDS_Shape const & shape, bool twice)
{
    gp_Trsf move;
    move.SetRotation(gp_Ax1({1, 2, 3}, {1, 1, 0}), 0.7);
    TopLoc_Location const location(move);
    if (!twice)
        return shape.Moved(location);
    TopoDS_Compound compound;
    BRep_Builder().MakeCompound(compound);
    BRep_Builder().Add(compound, shape.Moved(location));
    return compound.Moved(location);
}

} // namespace

TEST(UvCurveOfEdge, OfLinesOnPlanesIsThatOfTheKernel)
{
    EXPECT_EQ(countOf<Geom2d_Line>(box()), 24);
}

TEST(UvCurveOfEdge, OfCirclesOnPlanesIsThatOfTheKernel)
{
    EXPECT_EQ(countOf<Geom2d_Circle>(cylinder()), 2);
}

TEST(UvCurveOfEdge, OnPlacedShapesIsThatOfTheKernel)
{
    for (bool const twice : {false, true}) {
        EXPECT_EQ(countOf<Geom2d_Circle>(placed(cylinder(), twice)), 2);
        EXPECT_EQ(countOf<Geom2d_Line>(placed(box(), twice)), 24);
    }
}

TEST(UvCurveOfEdge, OfMirroredShapesIsThatOfTheKernel)
{
    EXPECT_EQ(countOf<Geom2d_Circle>(tests::mirrored(cylinder())), 2);
}

TEST(UvCurveOfEdge, OfOtherCurvesOnPlanesIsThatOfTheKernel)
{
    EXPECT_GT(countOf<Geom2d_Curve>(withoutCurvesOnPlanes(tests::ellipticPrism())), 0);
    EXPECT_GT(countOf<Geom2d_Curve>(withoutCurvesOnPlanes(tests::parabolicPrism())), 0);
    EXPECT_GT(countOf<Geom2d_Curve>(withoutCurvesOnPlanes(tests::coneWithHyperbola())), 0);
}

TEST(UvCurveOfEdge, ThatThePlaneHasOfItsOwnStays)
{
    EXPECT_EQ(countOf<Geom2d_Line>(BRepPrimAPI_MakeBox(1, 2, 3).Shape()), 24);
}

TEST(UvCurveOfEdge, OnOtherSurfacesIsThatOfTheKernel)
{
    EXPECT_GT(countOf<Geom2d_Curve>(tests::sphere()), 0);
    EXPECT_GT(countOf<Geom2d_Curve>(tests::torus()), 0);
}
