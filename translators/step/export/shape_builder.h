#ifndef KELD_STEP_EXPORT_SHAPE_BUILDER_H
#define KELD_STEP_EXPORT_SHAPE_BUILDER_H

#include "coverage.h"
#include "export/kernel_geometry.h"

#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <TopoDS_Vertex.hxx>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

class Geom_Curve;
class Geom_Surface;

namespace transl_tk {
class Base;
class Body;
class Curve3D;
class Edge;
class Face;
class Fin;
class Loop;
class Part;
class Point3D;
class Shell;
class SubPool;
class Surface;
class Vertex;
} // namespace transl_tk

namespace step {

class EdgeTraces;

/// Makes shapes of the kernel from a model. Entities that are shared become shapes that are shared.
class ShapeBuilder
{
public:
    /// Takes tolerances from the attributes of `model`. Counts in `coverage` what it makes and what
    /// it cannot make.
    ShapeBuilder(transl_tk::SubPool & model, Coverage & coverage);

    /// A compound of all that stands in `part`: solids, shells, edges, curves with ends, and
    /// points.
    TopoDS_Shape shapeOf(transl_tk::Part & part);

    /// A solid, where the shells bound one, or a shell, or a compound of shells. Null for a body
    /// without shells.
    TopoDS_Shape shapeOf(transl_tk::Body & body);

    /// Null where the entity makes no shape, which is counted.
    TopoDS_Shape shapeOf(transl_tk::Shell & shell);
    TopoDS_Shape shapeOf(transl_tk::Face & face);
    TopoDS_Shape shapeOf(transl_tk::Edge & edge);
    TopoDS_Shape shapeOf(transl_tk::Curve3D & curve);
    TopoDS_Shape shapeOf(transl_tk::Point3D & point);

    /// What an entity that was asked for, or that belongs to one, has become; null for any other.
    TopoDS_Shape madeFrom(transl_tk::Base const & entity) const;

    /// What could not be made, a sentence each.
    std::vector<std::string> const & faults() const { return m_Faults; }

private:
    TopoDS_Face faceOf(transl_tk::Face & face);
    void addLoop(TopoDS_Face & face, transl_tk::Loop & loop, bool faceSense, EdgeTraces & traces);
    opencascade::handle<Geom_Curve> curveOf(transl_tk::Curve3D & carrier);
    TopoDS_Edge edgeOf(transl_tk::Edge & edge);
    TopoDS_Vertex vertexOf(transl_tk::Vertex & vertex,
                           opencascade::handle<Geom_Curve> const & curve);
    opencascade::handle<Geom_Surface> surfaceOf(transl_tk::Surface & surface);
    double toleranceOf(transl_tk::Base const & entity) const;
    void fault(Kind kind, transl_tk::Base const & entity, std::string const & words);

    Coverage & m_Coverage;
    std::unordered_map<transl_tk::Base const *, double> m_Tolerances;
    std::unordered_map<transl_tk::Base const *, TopoDS_Shape> m_Made;
    std::unordered_map<transl_tk::Vertex *, TopoDS_Vertex> m_Vertices;
    std::unordered_map<transl_tk::Edge *, TopoDS_Edge> m_Edges;
    std::unordered_map<transl_tk::Curve3D *, opencascade::handle<Geom_Curve>> m_Curves;
    std::unordered_map<transl_tk::Surface *, opencascade::handle<Geom_Surface>> m_Surfaces;
    std::vector<std::string> m_Faults;
};

} // namespace step

#endif
