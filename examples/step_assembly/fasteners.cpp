#include "build_shapes.h"
#include "parts.h"

#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <BRep_Tool.hxx>
#include <Geom_Plane.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <cmath>

namespace vise {

namespace {

gp_Dir const alongX(1, 0, 0);
gp_Dir const alongZ(0, 0, 1);

/// The faces of `shape` in the plane x = `x`.
std::vector<TopoDS_Face> facesAt(TopoDS_Shape const & shape, double x)
{
    TopTools_IndexedMapOfShape found;
    TopExp::MapShapes(shape, TopAbs_FACE, found);
    std::vector<TopoDS_Face> result;
    for (int i = 1; i <= found.Extent(); ++i) {
        TopoDS_Face const face = TopoDS::Face(found(i));
        auto const plane = Handle(Geom_Plane)::DownCast(BRep_Tool::Surface(face));
        if (!plane.IsNull() && std::abs(plane->Axis().Direction().X()) > 0.999 &&
            std::abs(plane->Location().X() - x) < 1e-9)
            result.push_back(face);
    }
    return result;
}

} // namespace

JawPlate jawPlate()
{
    TopoDS_Shape shape = box({0, -40, 0}, {PlateThickness, 40, 34});
    // For round work.
    shape = cut(shape,
                extruded(polygon({{0, -2.5, -1}, {2.5, 0, -1}, {0, 2.5, -1}}), gp_Vec(0, 0, 36)));
    for (double const y : {-ScrewSpacing, ScrewSpacing}) {
        shape = cut(shape, cylinder({{-1, y, ScrewHeight}, alongX}, 2.6, 8));
        shape = cut(shape, cone({{0, y, ScrewHeight}, alongX}, 5.2, 2.2, 3));
    }
    return {checked(shape, "the jaw plate is not valid"), facesAt(shape, 0)};
}

TopoDS_Shape countersunkScrew()
{
    gp_Ax1 const axis({0, 0, 0}, alongX);
    TopoDS_Shape result = revolved(
        polygon({{0, 0, 0}, {0, 0, 5}, {2.5, 0, 2.5}, {14, 0, 2.5}, {15, 0, 1.5}, {15, 0, 0}}),
        axis);
    result = cut(result, box({-1, -0.6, -6}, {1, 0.6, 6}));
    return checked(result, "the screw is not valid");
}

TopoDS_Shape hexagonBolt()
{
    constexpr double AcrossCorners = 9.24;
    constexpr double HeadHeight = 6.4;
    std::vector<gp_Pnt> corners;
    corners.reserve(6);
    for (int i = 0; i < 6; ++i)
        corners.emplace_back(AcrossCorners * std::cos(i * M_PI / 3),
                             AcrossCorners * std::sin(i * M_PI / 3), 0);
    TopoDS_Shape const prism = extruded(polygon(corners), gp_Vec(0, 0, HeadHeight));
    // The chamfer is 30 degrees flat.
    constexpr double Slope = 1.7320508075688772;
    constexpr double TopRadius = 7.6;
    TopoDS_Shape const chamfer =
        cone({{0, 0, -4}, alongZ}, TopRadius + (HeadHeight + 4) * Slope, TopRadius, HeadHeight + 4);
    TopoDS_Shape const shank =
        revolved(polygon({{0, 0, 1}, {0, 0, -24}, {4, 0, -24}, {5, 0, -23}, {5, 0, 1}}),
                 {{0, 0, 0}, alongZ});
    return checked(fused(common(prism, chamfer), shank), "the bolt is not valid");
}

TopoDS_Shape washer()
{
    gp_Ax1 const axis({0, 0, -2}, alongZ);
    TopoDS_Shape const ring = cut(cylinder(axis, 10, 2), cylinder(axis, 5.25, 2));
    return checked(BRepBuilderAPI_NurbsConvert(ring, true).Shape(), "the washer is not valid");
}

} // namespace vise
