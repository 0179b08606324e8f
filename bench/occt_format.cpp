#include "shape_format.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BinTools.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_Line.hxx>
#include <Geom_Plane.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS_Builder.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Solid.hxx>
#include <TopoDS_Vertex.hxx>
#include <TopoDS_Wire.hxx>

namespace bench {

namespace {

gp_Pnt pointOf(Triple const & triple)
{
    return {triple[0], triple[1], triple[2]};
}

gp_Dir directionOf(Triple const & triple)
{
    return {triple[0], triple[1], triple[2]};
}

Handle(Geom_Surface) planeOf(QuadNet::Plane const & plane)
{
    gp_Dir const first = directionOf(plane.first);
    gp_Dir const normal = first.Crossed(directionOf(plane.second));
    return new Geom_Plane(gp_Ax3(pointOf(plane.location), normal, first));
}

Handle(Geom_Surface) splineOf(QuadNet::Patch const & patch)
{
    constexpr int Points = QuadNet::PointsADirection;
    TColgp_Array2OfPnt points(1, Points, 1, Points);
    auto const * at = patch.data();
    for (int u = 1; u <= Points; ++u)
        for (int v = 1; v <= Points; ++v, at += 3)
            points.SetValue(u, v, gp_Pnt(at[0], at[1], at[2]));
    TColStd_Array1OfReal knots(1, QuadNet::KnotCount);
    TColStd_Array1OfInteger multiplicities(1, QuadNet::KnotCount);
    for (int i = 0; i < QuadNet::KnotCount; ++i) {
        knots.SetValue(i + 1, PatchKnots[i]);
        multiplicities.SetValue(i + 1, PatchMultiplicities[i]);
    }
    return new Geom_BSplineSurface(points, knots, knots, multiplicities, multiplicities,
                                   QuadNet::Degree, QuadNet::Degree);
}

TopoDS_Shape shapeOf(QuadNet const & net)
{
    std::vector<TopoDS_Vertex> vertices;
    for (Triple const & point : net.m_Vertices)
        vertices.push_back(BRepBuilderAPI_MakeVertex(pointOf(point)));

    std::vector<TopoDS_Edge> edges;
    for (std::size_t i = 0; i < net.m_Lines.size(); ++i) {
        QuadNet::Line const & line = net.m_Lines[i];
        Handle(Geom_Curve) const curve =
            new Geom_Line(pointOf(line.point), directionOf(line.direction));
        auto const [start, end] = net.ends(static_cast<int>(i));
        edges.push_back(BRepBuilderAPI_MakeEdge(curve, vertices[static_cast<std::size_t>(start)],
                                                vertices[static_cast<std::size_t>(end)], 0,
                                                line.length));
    }

    TopoDS_Builder const builder;
    TopoDS_Shell shell;
    builder.MakeShell(shell);
    auto plane = net.m_Planes.begin();
    auto patch = net.m_Patches.begin();
    for (int i = 0; i < net.faces(); ++i) {
        TopoDS_Wire wire;
        builder.MakeWire(wire);
        for (QuadNet::Side const & side : net.sides(i))
            builder.Add(wire, edges[static_cast<std::size_t>(side.edge)].Oriented(
                                  side.sense ? TopAbs_FORWARD : TopAbs_REVERSED));
        constexpr bool Inside = false;
        builder.Add(shell,
                    BRepBuilderAPI_MakeFace(
                        QuadNet::isPlane(i) ? planeOf(*plane++) : splineOf(*patch++), wire, Inside)
                        .Face());
    }
    TopoDS_Solid solid;
    builder.MakeSolid(solid);
    builder.Add(solid, shell);
    return solid;
}

} // namespace

bool const ShapeFormat::IsThere = true;

struct ShapeFormat::Content
{
    TopoDS_Shape shape;
};

ShapeFormat::ShapeFormat() : m_Content(new Content) {}

ShapeFormat::ShapeFormat(QuadNet const & net) : m_Content(new Content{shapeOf(net)}) {}

ShapeFormat::~ShapeFormat() = default;

bool ShapeFormat::write(char const * path) const
{
    return BinTools::Write(m_Content->shape, path);
}

bool ShapeFormat::read(char const * path)
{
    return BinTools::Read(m_Content->shape, path);
}

int ShapeFormat::faces() const
{
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(m_Content->shape, TopAbs_FACE, faces);
    return faces.Extent();
}

} // namespace bench
