#include "import/presentation.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Precision.hxx>
#include <Standard_Failure.hxx>
#include <TopAbs.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Shape.hxx>
#include <algorithm>
#include <gp_Pnt.hxx>

namespace step {

namespace {

using Line = std::vector<gp_Pnt>;

/// The points of an edge along its orientation.
Line lineFrom(TopoDS_Edge const & edge, bool & isExact)
{
    BRepAdaptor_Curve const curve(edge);
    Line line;
    if (curve.GetType() == GeomAbs_Line) {
        line = {curve.Value(curve.FirstParameter()), curve.Value(curve.LastParameter())};
    } else if (curve.GetType() == GeomAbs_BSplineCurve && curve.Degree() == 1) {
        for (int i = 1; i <= curve.NbKnots(); ++i)
            line.push_back(curve.BSpline()->Value(curve.BSpline()->Knot(i)));
    } else {
        constexpr double Angle = 0.1;
        constexpr double Deflection = 0.01; // millimetres
        GCPnts_TangentialDeflection const points(curve, Angle, Deflection);
        for (int i = 1; i <= points.NbPoints(); ++i)
            line.push_back(points.Value(i));
        isExact = false;
    }
    if (edge.Orientation() == TopAbs_REVERSED)
        std::reverse(line.begin(), line.end());
    return line;
}

} // namespace

Presentation presentationFrom(TopoDS_Shape const & shape)
{
    Presentation result;
    if (shape.IsNull())
        return result;
    Line before;
    for (TopExp_Explorer found(shape, TopAbs_EDGE); found.More(); found.Next()) {
        Line line;
        try {
            line = lineFrom(TopoDS::Edge(found.Current()), result.isExact);
        } catch (Standard_Failure const &) {
            result.isWhole = false;
            continue;
        }
        bool const goesOn = !before.empty() && !line.empty() &&
                            before.back().Distance(line.front()) < Precision::Confusion();
        for (std::size_t i = goesOn ? 1 : 0; i < line.size(); ++i)
            result.points.insert(result.points.end(), {line[i].X(), line[i].Y(), line[i].Z()});
        if (goesOn)
            result.lengths.back() += static_cast<int>(line.size()) - 1;
        else
            result.lengths.push_back(static_cast<int>(line.size()));
        before = std::move(line);
    }
    result.isWhole = result.isWhole && !TopExp_Explorer(shape, TopAbs_FACE).More();
    return result;
}

} // namespace step
