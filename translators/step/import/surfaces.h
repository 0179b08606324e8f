#ifndef KELD_STEP_IMPORT_SURFACES_H
#define KELD_STEP_IMPORT_SURFACES_H

#include "import/uv_curves.h"

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

/// The stretch of a surface in both of its parameters.
struct SurfaceRange
{
    double u1 = 0, u2 = 0, v1 = 0, v2 = 0;
};

/// Whether a surface is swept by a parabola or hyperbola without an end, of which only a stretch
/// has a form in the toolkit.
bool isEndless(opencascade::handle<Geom_Surface> const & surface);

/// Makes a surface of any kind. The caller owns it. Of an endless one, the stretch `range`. The
/// base of an offset surface, which nobody owns, stays until the process ends.
SurfaceResult makeSurface(opencascade::handle<Geom_Surface> const & surface,
                          SurfaceRange const & range = {});

} // namespace step

#endif
