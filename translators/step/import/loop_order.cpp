#include "import/loop_order.h"

#include <BRepTools_WireExplorer.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Wire.hxx>
#include <algorithm>

namespace step {

namespace {

bool isConnected(std::vector<TopoDS_Shape> const & edges)
{
    for (std::size_t i = 0; i < edges.size(); ++i) {
        TopoDS_Vertex const end = TopExp::LastVertex(TopoDS::Edge(edges[i]), true);
        TopoDS_Vertex const start =
            TopExp::FirstVertex(TopoDS::Edge(edges[(i + 1) % edges.size()]), true);
        if (end.IsNull() || !end.IsSame(start))
            return false;
    }
    return true;
}

std::vector<TopoDS_Shape> explored(TopoDS_Wire const & wire, TopoDS_Face const & face)
{
    std::vector<TopoDS_Shape> edges;
    try {
        for (BRepTools_WireExplorer explorer(wire, face); explorer.More(); explorer.Next())
            edges.push_back(explorer.Current());
    } catch (Standard_Failure const &) {
        edges.clear();
    }
    return edges;
}

} // namespace

std::vector<TopoDS_Shape> edgesInOrder(TopoDS_Wire const & wire, TopoDS_Face const & face)
{
    std::vector<TopoDS_Shape> edges;
    for (TopoDS_Iterator edge(wire); edge.More(); edge.Next())
        edges.push_back(edge.Value());
    if (edges.size() < 2 || isConnected(edges))
        return edges;
    // Wires that run against their edges hold them in reverse.
    std::vector<TopoDS_Shape> const backwards(edges.rbegin(), edges.rend());
    if (isConnected(backwards))
        return backwards;
    std::vector<TopoDS_Shape> const found = explored(wire, face);
    return found.size() == edges.size() ? found : edges;
}

} // namespace step
