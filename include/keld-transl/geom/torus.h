#ifndef KELD_TRANSL_GEOM_TORUS_H
#define KELD_TRANSL_GEOM_TORUS_H

#include <keld-transl/geom/surface.h>

namespace geom {

/// A torus by two radii; the first may be the smaller one.
class KELD_TRANSL_EXPORT Torus : public Surface
{
protected:
    Torus() = default;
    ~Torus() override = default;

public:
    Torus(Torus const &) = default;
    Torus & operator=(Torus const &) = default;

    /// The third axis of the placement is computed as the cross product of the first with the
    /// second; the fourth array is never read.
    static Torus * create(double const (&location)[3], double const (&first)[3],
                          double const (&second)[3], double const (&ignored)[3],
                          double const & firstRadius, double const & secondRadius,
                          Parameterization const & u, Parameterization const & v);

    virtual double getFirstRadius() = 0;
    virtual double getSecondRadius() = 0;
    virtual void getPlacement(double (&location)[3], double (&first)[3], double (&second)[3],
                              double (&third)[3]) = 0;
};

} // namespace geom

#endif
