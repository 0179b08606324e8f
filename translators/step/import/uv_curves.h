#ifndef KELD_STEP_IMPORT_UV_CURVES_H
#define KELD_STEP_IMPORT_UV_CURVES_H

#include <keld-transl/geom/uv_curve.h>

#include <Standard_Handle.hxx>
#include <string>

class Geom2d_Curve;

namespace step {

/// How the parameters of a surface of the toolkit follow from those of the kernel's surface that it
/// was made from: u stays, v becomes vFactor * v + vShift.
struct UvMap
{
    bool exists = true; ///< false when no such simple rule holds
    double vFactor = 1;
    double vShift = 0;
};

struct UvCurveResult
{
    geom::UVCurve * curve = nullptr;
    std::string changed = {};
};

/// Makes the stretch from `first` to `last` of a curve in parameter space; these two are the ends
/// of the new one's knots. The caller owns it.
UvCurveResult makeUvCurve(opencascade::handle<Geom2d_Curve> const & curve, double first,
                          double last, UvMap const & map);

} // namespace step

#endif
