#ifndef KELD_TRANSL_GEOM_CYLINDER_H
#define KELD_TRANSL_GEOM_CYLINDER_H

#include <keld-transl/geom/surface.h>

namespace geom {

/// A cylinder.
class KELD_TRANSL_EXPORT Cylinder : public Surface
{
protected:
    Cylinder() = default;
    ~Cylinder() override = default;

public:
    Cylinder(Cylinder const &) = default;
    Cylinder & operator=(Cylinder const &) = default;

    /// The third axis of the placement is computed as the cross product of the first with the
    /// second; the fourth array is never read.
    static Cylinder * create(double const (&location)[3], double const (&first)[3],
                             double const (&second)[3], double const (&ignored)[3],
                             double const & radius, Parameterization const & u,
                             Parameterization const & v);

    virtual double getRadius() = 0;
    virtual void getPlacement(double (&location)[3], double (&first)[3], double (&second)[3],
                              double (&third)[3]) = 0;
};

} // namespace geom

#endif
