#ifndef KELD_TRANSL_GEOM_CONE_H
#define KELD_TRANSL_GEOM_CONE_H

#include <keld-transl/geom/surface.h>

namespace geom {

/// A cone by a radius and an angle. The unit of the angle is the translators' affair.
class KELD_TRANSL_EXPORT Cone : public Surface
{
protected:
    Cone() = default;
    ~Cone() override = default;

public:
    Cone(Cone const &) = default;
    Cone & operator=(Cone const &) = default;

    /// The third axis of the placement is computed as the cross product of the first with the
    /// second; the fourth array is never read.
    static Cone * create(double const (&location)[3], double const (&first)[3],
                         double const (&second)[3], double const (&ignored)[3],
                         double const & radius, double const & angle, Parameterization const & u,
                         Parameterization const & v);

    virtual double getRadius() = 0;
    virtual double getAngle() = 0;
    virtual void getPlacement(double (&location)[3], double (&first)[3], double (&second)[3],
                              double (&third)[3]) = 0;
};

} // namespace geom

#endif
