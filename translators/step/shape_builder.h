#ifndef KELD_STEP_SHAPE_BUILDER_H
#define KELD_STEP_SHAPE_BUILDER_H

#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <TopoDS_Vertex.hxx>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

class Geom_Surface;

namespace transl_tk {
class Base;
class Body;
class Edge;
class Face;
class Fin;
class Loop;
class Part;
class Shell;
class SubPool;
class Surface;
class Vertex;
} // namespace transl_tk

namespace step {

/// Makes shapes of the kernel from a model. Entities that are shared become shapes that are shared.
class ShapeBuilder
{
public:
    /// Takes tolerances from the attributes of `model`.
    explicit ShapeBuilder(transl_tk::SubPool & model);

    /// A compound of all that stands in `part`: solids, shells, edges and points.
    TopoDS_Shape shapeOf(transl_tk::Part & part);

    /// A solid, where the shells bound one, or a shell, or a compound of shells.
    TopoDS_Shape shapeOf(transl_tk::Body & body);

    /// What could not be made, a sentence each.
    std::vector<std::string> const & faults() const { return m_Faults; }

private:
    struct Trace;

    TopoDS_Shape shapeOf(transl_tk::Shell & shell);
    TopoDS_Face faceOf(transl_tk::Face & face);
    void addLoop(TopoDS_Face & face, transl_tk::Loop & loop, bool faceSense,
                 std::vector<Trace> & traces);
    void setTraces(TopoDS_Face const & face, std::vector<Trace> & traces);
    void setTrace(TopoDS_Face const & face, Trace & trace);
    TopoDS_Edge edgeOf(transl_tk::Edge & edge);
    TopoDS_Vertex vertexOf(transl_tk::Vertex & vertex);
    opencascade::handle<Geom_Surface> surfaceOf(transl_tk::Surface & surface);
    double toleranceOf(transl_tk::Base const & entity) const;
    void fault(char const * what, transl_tk::Base const & entity, std::string const & words);

    std::unordered_map<transl_tk::Base const *, double> m_Tolerances;
    std::unordered_map<transl_tk::Vertex *, TopoDS_Vertex> m_Vertices;
    std::unordered_map<transl_tk::Edge *, TopoDS_Edge> m_Edges;
    std::unordered_map<transl_tk::Surface *, opencascade::handle<Geom_Surface>> m_Surfaces;
    std::vector<std::string> m_Faults;
};

} // namespace step

#endif
