#ifndef KELD_TRANSL_GEOM_RULED_SURFACE_H
#define KELD_TRANSL_GEOM_RULED_SURFACE_H

#include <keld-transl/geom/curve.h>
#include <keld-transl/geom/surface.h>

namespace geom {

/// The straight lines between two curves. Owns both; they must be two objects.
class KELD_TRANSL_EXPORT RuledSurface : public Surface
{
protected:
    RuledSurface() = default;
    ~RuledSurface() override = default;

public:
    RuledSurface(RuledSurface const &) = default;
    RuledSurface & operator=(RuledSurface const &) = default;

    /// Adopts `first` and `second`, which may be null.
    static RuledSurface * create(Curve * const first, Curve * const second,
                                 Parameterization const & u, Parameterization const & v);

    /// The curves, which stay the surface's.
    virtual Curve * getFirstCurve() = 0;
    virtual Curve * getSecondCurve() = 0;
};

} // namespace geom

#endif
