#include "geom/ownerless.h"
#include "geom/surface_kinds.h"

namespace geom {

Surface::~Surface()
{
    forgetOwnerless(this);
}

void Surface::destruct(Surface * surface)
{
    delete surface;
}

void Surface::scale(Surface * surface, double const & factor, double const & centreX,
                    double const & centreY, double const & centreZ)
{
    Scaling const scaling(factor, centreX, centreY, centreZ);
    // Offsets of offsets may nest deeper than the stack is: a loop goes down to the last base.
    while (surface != nullptr) {
        Surface * base = nullptr;
        visitSurface(*surface, [&](auto & kind) {
            kind.scaleBy(scaling);
            if constexpr (requires { kind.getBaseSurface(); })
                base = kind.getBaseSurface();
        });
        surface = base;
    }
}

} // namespace geom
