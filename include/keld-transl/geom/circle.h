#ifndef KELD_TRANSL_GEOM_CIRCLE_H
#define KELD_TRANSL_GEOM_CIRCLE_H

#include <keld-transl/geom/curve.h>

namespace geom {

/// A circle in the plane of the first two axes of its placement.
class KELD_TRANSL_EXPORT Circle : public Curve
{
protected:
    Circle() = default;
    ~Circle() override = default;

public:
    Circle(Circle const &) = default;
    Circle & operator=(Circle const &) = default;

    /// The third axis of the placement is computed as the cross product of the first with the
    /// second; the fourth array is never read.
    static Circle * create(double const (&location)[3], double const (&first)[3],
                           double const (&second)[3], double const (&ignored)[3],
                           double const & radius, Parameterization const & parameterization);

    virtual double getRadius() = 0;
    virtual void getPlacement(double (&location)[3], double (&first)[3], double (&second)[3],
                              double (&third)[3]) = 0;
};

} // namespace geom

#endif
