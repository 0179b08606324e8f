#ifndef KELD_STEP_IMPORT_CURVES_H
#define KELD_STEP_IMPORT_CURVES_H

#include <keld-transl/geom/curve.h>

#include <Standard_Handle.hxx>
#include <string>

class Geom_Curve;

namespace step {

/// A curve of the toolkit, made from one of the kernel.
struct CurveResult
{
    geom::Curve * curve = nullptr; ///< null when there is no form for it
    std::string changed = {};      ///< what became of what; empty for an exact copy
    bool sameParameters = true;    ///< a parameter leads to the same point as before
};

/// Makes the stretch from `first` to `last` of a curve, of any kind. The caller owns it.
CurveResult makeCurve(opencascade::handle<Geom_Curve> const & curve, double first, double last);

} // namespace step

#endif
