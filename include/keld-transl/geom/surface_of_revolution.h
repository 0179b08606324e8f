#ifndef KELD_TRANSL_GEOM_SURFACE_OF_REVOLUTION_H
#define KELD_TRANSL_GEOM_SURFACE_OF_REVOLUTION_H

#include <keld-transl/geom/curve.h>
#include <keld-transl/geom/surface.h>

namespace geom {

/// What a curve, the meridian, sweeps when it turns about an axis. Owns the curve.
class KELD_TRANSL_EXPORT SurfaceOfRevolution : public Surface
{
protected:
    SurfaceOfRevolution() = default;
    ~SurfaceOfRevolution() override = default;

public:
    SurfaceOfRevolution(SurfaceOfRevolution const &) = default;
    SurfaceOfRevolution & operator=(SurfaceOfRevolution const &) = default;

    /// Adopts `curve`, which may be null.
    static SurfaceOfRevolution * create(double const (&point)[3], double const (&direction)[3],
                                        Curve * const curve, Parameterization const & u,
                                        Parameterization const & v);

    /// The meridian, which stays the surface's.
    virtual Curve * getCurve() = 0;
    virtual void getAxisPoint(double (&point)[3]) = 0;
    virtual void getAxisDirection(double (&direction)[3]) = 0;
};

} // namespace geom

#endif
