#ifndef KELD_STEP_IMPORT_EDGE_UV_H
#define KELD_STEP_IMPORT_EDGE_UV_H

#include <Standard_Handle.hxx>

class Geom2d_Curve;
class TopoDS_Edge;
class TopoDS_Face;

namespace step {

/// The curve of `edge` in the parameters of the surface of `face`, from `first` to `last`. The
/// kernel's own, except that lines and circles on planes, for which files hold none, are worked out
/// without the kernel's general projection, which takes a third of the time that mapping takes.
/// Null when there is none.
opencascade::handle<Geom2d_Curve> uvCurveOf(TopoDS_Edge const & edge, TopoDS_Face const & face,
                                            double & first, double & last);

} // namespace step

#endif
