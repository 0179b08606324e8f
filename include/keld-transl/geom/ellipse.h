#ifndef KELD_TRANSL_GEOM_ELLIPSE_H
#define KELD_TRANSL_GEOM_ELLIPSE_H

#include <keld-transl/geom/curve.h>

namespace geom {

/// An ellipse in the plane of the first two axes of its placement, with a radius along each.
class KELD_TRANSL_EXPORT Ellipse : public Curve
{
protected:
    Ellipse() = default;
    ~Ellipse() override = default;

public:
    Ellipse(Ellipse const &) = default;
    Ellipse & operator=(Ellipse const &) = default;

    /// The third axis of the placement is computed as the cross product of the first with the
    /// second; the fourth array is never read.
    static Ellipse * create(double const (&location)[3], double const (&first)[3],
                            double const (&second)[3], double const (&ignored)[3],
                            double const & firstRadius, double const & secondRadius,
                            Parameterization const & parameterization);

    virtual void getPlacement(double (&location)[3], double (&first)[3], double (&second)[3],
                              double (&third)[3]) = 0;
    virtual double getFirstRadius() = 0;
    virtual double getSecondRadius() = 0;
};

} // namespace geom

#endif
