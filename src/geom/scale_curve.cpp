#include "geom/curve_kinds.h"

namespace geom {

void scaleCurve(Curve * curve, Scaling const & scaling)
{
    if (curve != nullptr)
        visitCurve(*curve, [&](auto & kind) { kind.scaleBy(scaling); });
}

} // namespace geom
