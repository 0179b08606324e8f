#ifndef KELD_TRANSL_GEOM_SPHERE_H
#define KELD_TRANSL_GEOM_SPHERE_H

#include <keld-transl/geom/surface.h>

namespace geom {

/// A sphere.
class KELD_TRANSL_EXPORT Sphere : public Surface
{
protected:
    Sphere() = default;
    ~Sphere() override = default;

public:
    Sphere(Sphere const &) = default;
    Sphere & operator=(Sphere const &) = default;

    /// The third axis of the placement is computed as the cross product of the first with the
    /// second; the fourth array is never read.
    static Sphere * create(double const (&location)[3], double const (&first)[3],
                           double const (&second)[3], double const (&ignored)[3],
                           double const & radius, Parameterization const & u,
                           Parameterization const & v);

    virtual double getRadius() = 0;
    virtual void getPlacement(double (&location)[3], double (&first)[3], double (&second)[3],
                              double (&third)[3]) = 0;
};

} // namespace geom

#endif
