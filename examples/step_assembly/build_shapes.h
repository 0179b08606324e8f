#ifndef STEP_ASSEMBLY_BUILD_SHAPES_H
#define STEP_ASSEMBLY_BUILD_SHAPES_H

#include <Geom_Curve.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <TopoDS_Wire.hxx>
#include <gp_Ax1.hxx>
#include <gp_Pnt.hxx>
#include <gp_Trsf.hxx>
#include <gp_Vec.hxx>
#include <vector>

namespace vise {

/// Thrown where the kernel makes nothing, or something invalid, of what it was given.
class BuildFailure
{
public:
    explicit BuildFailure(char const * what) : m_What(what) {}

    char const * what() const { return m_What; }

private:
    char const * m_What;
};

TopoDS_Shape box(gp_Pnt const & low, gp_Pnt const & high);
/// A cylinder that begins at the origin of `axis`.
TopoDS_Shape cylinder(gp_Ax1 const & axis, double radius, double length);
/// A cone that begins at the origin of `axis`; one of the radii may be 0.
TopoDS_Shape cone(gp_Ax1 const & axis, double first, double last, double length);

TopoDS_Shape fused(TopoDS_Shape const & first, TopoDS_Shape const & second);
TopoDS_Shape cut(TopoDS_Shape const & from, TopoDS_Shape const & tool);
TopoDS_Shape common(TopoDS_Shape const & first, TopoDS_Shape const & second);
/// All edges of `shape` for which `chosen` holds, rounded off.
template <class Choice>
std::vector<TopoDS_Edge> edgesWhere(TopoDS_Shape const & shape, Choice const & chosen);
std::vector<TopoDS_Edge> edgesOf(TopoDS_Shape const & shape);
TopoDS_Shape rounded(TopoDS_Shape const & shape, std::vector<TopoDS_Edge> const & edges,
                     double radius);

/// The ends of an edge, and whether both lie at `value` of a coordinate (1 x, 2 y, 3 z).
gp_Pnt startOf(TopoDS_Edge const & edge);
gp_Pnt endOf(TopoDS_Edge const & edge);
bool liesAt(TopoDS_Edge const & edge, int coordinate, double value);

TopoDS_Edge line(gp_Pnt const & from, gp_Pnt const & to);
TopoDS_Edge edge(Handle(Geom_Curve) const & curve);
/// Edges one behind the other, in any direction each.
TopoDS_Wire wire(std::vector<TopoDS_Edge> const & edges);
/// The plane face inside of a closed wire.
TopoDS_Face face(TopoDS_Wire const & outline);
/// A closed polygon as a plane face.
TopoDS_Face polygon(std::vector<gp_Pnt> const & corners);
TopoDS_Shape extruded(TopoDS_Shape const & shape, gp_Vec const & along);
TopoDS_Shape revolved(TopoDS_Shape const & shape, gp_Ax1 const & axis);
/// The solid whose boundary the faces are. They have to fit together.
TopoDS_Shape solid(std::vector<TopoDS_Face> const & faces);

gp_Trsf shift(double x, double y, double z);
gp_Trsf turn(gp_Ax1 const & axis, double degrees);
TopoDS_Shape moved(TopoDS_Shape const & shape, gp_Trsf const & transform);

/// `shape` itself. Throws BuildFailure when it is not valid.
TopoDS_Shape checked(TopoDS_Shape const & shape, char const * what);

template <class Choice>
std::vector<TopoDS_Edge> edgesWhere(TopoDS_Shape const & shape, Choice const & chosen)
{
    std::vector<TopoDS_Edge> result;
    for (TopoDS_Edge const & candidate : edgesOf(shape)) {
        if (chosen(candidate))
            result.push_back(candidate);
    }
    return result;
}

} // namespace vise

#endif
