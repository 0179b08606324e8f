#ifndef KELD_TRANSL_GEOM_SURFACE_OF_LINEAR_EXTRUSION_H
#define KELD_TRANSL_GEOM_SURFACE_OF_LINEAR_EXTRUSION_H

#include <keld-transl/geom/curve.h>
#include <keld-transl/geom/surface.h>

namespace geom {

/// What a curve, the profile, sweeps when it moves along a direction. Owns the curve.
class KELD_TRANSL_EXPORT SurfaceOfLinearExtrusion : public Surface
{
protected:
    SurfaceOfLinearExtrusion() = default;
    ~SurfaceOfLinearExtrusion() override = default;

public:
    SurfaceOfLinearExtrusion(SurfaceOfLinearExtrusion const &) = default;
    SurfaceOfLinearExtrusion & operator=(SurfaceOfLinearExtrusion const &) = default;

    /// Adopts `curve`, which may be null.
    static SurfaceOfLinearExtrusion * create(Curve * const curve, double const (&direction)[3],
                                             Parameterization const & u,
                                             Parameterization const & v);

    /// The profile, which stays the surface's.
    virtual Curve * getCurve() = 0;
    virtual void getDirection(double (&direction)[3]) = 0;
};

} // namespace geom

#endif
