#ifndef STEP_ASSEMBLY_PARTS_H
#define STEP_ASSEMBLY_PARTS_H

#include <Geom_Curve.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <vector>

namespace vise {

// The parts of a machine vise, in millimetres. The spindle runs along x, its head in front at small
// x; y is across, z up. Castings and sheets stand where they belong, small parts at the origin.
// Each function makes its part anew.

/// Height of the spindle's axis above the table.
constexpr double SpindleHeight = 57;
/// The work is clamped between the fixed jaw at this x ...
constexpr double FixedJaw = 104;
/// ... and the movable one, which grips here.
constexpr double MovableJaw = 62;
/// Thickness of a jaw plate, and where its lower edge is.
constexpr double PlateThickness = 6;
constexpr double PlateBottom = 42;

/// Foot, slideway, fixed jaw. Corners of the foot are tori, the chip opening a parabola, the back
/// of the jaw an extruded spline; the bore in the slanting back begins and ends in ellipses.
TopoDS_Shape base();
/// The slide with the movable jaw: its back is an extruded Bezier curve.
TopoDS_Shape slide();
/// The guide rail of the slide on the side of negative y.
TopoDS_Shape leftRail();
/// Its mirror image.
TopoDS_Shape rightRail();

/// A plate 6 by 80 by 34 at the origin, with its grip on the side of negative x, and two
/// countersunk holes.
struct JawPlate
{
    TopoDS_Shape shape;
    std::vector<TopoDS_Face> grip;
};
JawPlate jawPlate();
/// Where a jaw plate's screws stand in it.
constexpr double ScrewSpacing = 26;
constexpr double ScrewHeight = 17;

/// Along x; the middle of its head's top is at the origin.
TopoDS_Shape countersunkScrew();
/// Along z; the plane on which its head rests is at 0. The chamfer of the head meets its six sides
/// in hyperbolas.
TopoDS_Shape hexagonBolt();
/// Along z; its top is at 0. All its surfaces are B-spline surfaces, round ones rational.
TopoDS_Shape washer();

/// In its place. The head has a bore for the handle at `HandlePlace`; the end is a cone with a
/// point.
TopoDS_Shape spindle();
constexpr double HandlePlace = -34;
TopoDS_Shape sealRing();
/// Along y around the origin, a revolved spline.
TopoDS_Shape handleBar();
/// A ball for the end of the bar at positive y.
TopoDS_Shape knob();

/// An edge that lies on the offset of another curve. Its curve in the shape is a spline, because
/// the kernel writes no offset curves.
struct OffsetEdge
{
    TopoDS_Edge edge;
    Handle(Geom_Curve) curve;
};

/// A plate bent like the slide's back, on which it lies: a Bezier surface below, above an offset
/// surface of the trimmed one.
struct NamePlate
{
    TopoDS_Shape shape;
    TopoDS_Face top;
    std::vector<OffsetEdge> offsetEdges;
};
NamePlate namePlate();
/// The slide's back, from the top of the jaw downwards, at y 0.
Handle(Geom_Curve) backOfSlide();

/// Its top is a B-spline surface.
TopoDS_Shape anvilPlate();
/// An open shell.
TopoDS_Shape splashGuard();
/// The spindle's axis, and an arc that shows how to turn it: trimmed curves.
TopoDS_Shape constructionLines();

} // namespace vise

#endif
