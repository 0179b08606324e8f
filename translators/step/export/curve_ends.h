#ifndef KELD_STEP_EXPORT_CURVE_ENDS_H
#define KELD_STEP_EXPORT_CURVE_ENDS_H

#include <Standard_Handle.hxx>

class Geom_Curve;
class TopoDS_Vertex;

namespace geom {
class Curve;
}

namespace step {

/// A stretch of a curve, by its parameters.
struct CurveRange
{
    double first = 0;
    double last = 0;
};

/// The stretch of `curve` that an edge takes: what the parameterization of `from` says, or, where
/// there is none or the curve then ends far from the vertices, what lies between the vertices.
/// Either vertex may be null. A Standard_Failure for an endless curve of which nothing tells the
/// ends.
CurveRange endsOf(geom::Curve & from, opencascade::handle<Geom_Curve> const & curve,
                  TopoDS_Vertex const & start, TopoDS_Vertex const & end);

} // namespace step

#endif
