#ifndef KELD_STEP_IMPORT_PLACEMENT_H
#define KELD_STEP_IMPORT_PLACEMENT_H

#include <keld-transl/geom/parameterization.h>

#include <gp_Ax2.hxx>
#include <gp_Ax3.hxx>

namespace step {

/// Three coordinates, as the toolkit's shapes take them.
struct Triple
{
    explicit Triple(gp_XYZ const & xyz) : values{xyz.X(), xyz.Y(), xyz.Z()} {}
    explicit Triple(gp_Pnt const & point) : Triple(point.XYZ()) {}
    explicit Triple(gp_Dir const & direction) : Triple(direction.XYZ()) {}

    double values[3];
};

/// Location and first two axes of a placement. The toolkit's shapes compute the third one.
struct Placement
{
    explicit Placement(gp_Ax2 const & axes)
        : location(axes.Location()), first(axes.XDirection()), second(axes.YDirection())
    {}
    explicit Placement(gp_Ax3 const & axes)
        : location(axes.Location()), first(axes.XDirection()), second(axes.YDirection())
    {}

    Triple location;
    Triple first;
    Triple second;
};

/// The two ends of a stretch; no values when one of them is infinite.
geom::Parameterization rangeOf(double first, double last);

/// The same, and the multiples of a quarter of pi for a full turn that begins at 0.
geom::Parameterization angularRangeOf(double first, double last);

} // namespace step

#endif
