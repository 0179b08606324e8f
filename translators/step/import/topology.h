#ifndef KELD_STEP_IMPORT_TOPOLOGY_H
#define KELD_STEP_IMPORT_TOPOLOGY_H

#include "coverage.h"
#include "import/surfaces.h"

#include <NCollection_DataMap.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS_Shape.hxx>
#include <array>
#include <functional>
#include <map>
#include <set>
#include <utility>
#include <vector>

class TopoDS_Edge;
class TopoDS_Face;
class TopoDS_Vertex;
class TopoDS_Wire;

namespace transl_tk {
class Base;
class Body;
class Curve3D;
class Edge;
class Face;
class Fin;
class Loop;
class Part;
class Shell;
class Surface;
class Vertex;
} // namespace transl_tk

namespace step {

/// What the model holds of a body or a face of the file: its entity, and the shape itself.
struct Arrived
{
    TopoDS_Shape shape;
    transl_tk::Base * entity;
};

/// Moves shapes of the kernel into the model, part by part.
///
/// What is one shape in the file is one entity: a vertex of several edges, an edge of several fins,
/// a surface of several faces, a curve of several edges. Shapes that stand in one part at several
/// places are entities of their own at each.
class Topology
{
public:
    /// `nameOf` gives the name of a shape in the file, `entityOf` words for the entity that it was
    /// made from. Both may be asked for any shape that is added, and may give nothing. `onFace` is
    /// called before each face.
    struct Source
    {
        std::function<std::string(TopoDS_Shape const &)> nameOf;
        std::function<std::string(TopoDS_Shape const &)> entityOf;
        std::function<void(TopoDS_Shape const &)> onFace;
        /// Contents of faces that lack a boundary.
        std::set<TopoDS_TShape const *> const & openFaces;
    };

    Topology(Source source, Coverage & coverage) : m_Source(std::move(source)), m_Coverage(coverage)
    {}

    /// Adds all that stands in `shape`, of any kind, to `part`: solids and shells as bodies, the
    /// faces outside of shells as one body, wires and edges as edges, vertices as points.
    void addShape(TopoDS_Shape const & shape, transl_tk::Part & part);

    /// Bodies and faces, in the order in which they arrived. One shape of the file may be in the
    /// lists more than once.
    std::vector<Arrived> const & bodies() const { return m_ArrivedBodies; }
    std::vector<Arrived> const & faces() const { return m_ArrivedFaces; }
    std::vector<Arrived> const & edges() const { return m_ArrivedEdges; }
    std::vector<Arrived> const & vertices() const { return m_ArrivedVertices; }

private:
    using Matrix = std::array<double, 12>;
    using CurveKey = std::pair<void const *, std::array<double, 14>>;
    using SurfaceKey = std::pair<void const *, Matrix>;

    struct CarriedSurface
    {
        transl_tk::Surface * carrier = nullptr;
        UvMap uv;
        bool turned = false;
    };

    void addLoose(TopoDS_Shape const & shape, transl_tk::Part & part);
    void addSolid(TopoDS_Shape const & solid, transl_tk::Part & part);
    void addFreeShell(TopoDS_Shape const & shell, transl_tk::Part & part);
    void addFreeFaces(transl_tk::Part & part);
    void addFreeEdge(TopoDS_Edge const & edge, transl_tk::Part & part);
    void addPoint(TopoDS_Vertex const & vertex, transl_tk::Part & part);

    transl_tk::Body * newBody(TopoDS_Shape const & shape, transl_tk::Part & part);
    transl_tk::Shell * shellFrom(TopoDS_Shape const & shell, bool boundsSolid);
    transl_tk::Face * faceFrom(TopoDS_Face const & face);
    transl_tk::Loop * loopFrom(TopoDS_Wire const & wire, TopoDS_Face const & face,
                               UvMap const & uv);
    transl_tk::Fin * finFrom(TopoDS_Edge const & edge, TopoDS_Face const & face, UvMap const & uv);
    void setUvCurve(transl_tk::Fin & fin, TopoDS_Edge const & edge, TopoDS_Face const & face,
                    UvMap const & uv);
    transl_tk::Edge * edgeFrom(TopoDS_Edge const & edge);
    transl_tk::Vertex * vertexFrom(TopoDS_Vertex const & vertex);
    transl_tk::Curve3D * curveOf(TopoDS_Edge const & edge);
    CarriedSurface surfaceOf(TopoDS_Face const & face);

    template <class Entity>
    using ShapeMap = NCollection_DataMap<TopoDS_Shape, Entity *, TopTools_ShapeMapHasher>;

    Source m_Source;
    Coverage & m_Coverage;
    ShapeMap<transl_tk::Vertex> m_Vertices;
    ShapeMap<transl_tk::Edge> m_Edges;
    std::map<CurveKey, transl_tk::Curve3D *> m_Curves;
    std::map<SurfaceKey, CarriedSurface> m_Surfaces;
    std::vector<TopoDS_Shape> m_FreeFaces;
    std::vector<Arrived> m_ArrivedBodies;
    std::vector<Arrived> m_ArrivedFaces;
    std::vector<Arrived> m_ArrivedEdges;
    std::vector<Arrived> m_ArrivedVertices;
};

} // namespace step

#endif
