#ifndef KELD_STEP_SURFACES_H
#define KELD_STEP_SURFACES_H

#include "uv_curves.h"

#include <keld-transl/geom/surface.h>

#include <Standard_Handle.hxx>
#include <string>

class Geom_Surface;

namespace step {

/// A surface of the toolkit, made from one of the kernel.
struct SurfaceResult
{
    geom::Surface * surface = nullptr; ///< null when there is no form for it
    UvMap uv = {};
    bool turned = false;      ///< the normal, u crossed with v, points to the other side
    std::string changed = {}; ///< what became of what; empty for an exact copy
};

/// Makes a surface of any kind. The caller owns it. The base of an offset surface, which nobody
/// owns, stays until the process ends.
SurfaceResult makeSurface(opencascade::handle<Geom_Surface> const & surface);

} // namespace step

#endif
