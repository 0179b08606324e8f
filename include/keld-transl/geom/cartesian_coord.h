#ifndef KELD_TRANSL_GEOM_CARTESIAN_COORD_H
#define KELD_TRANSL_GEOM_CARTESIAN_COORD_H

#include <keld-transl/export.h>

namespace geom {

/// A coordinate system: an origin and three axes. Unlike the placement of a curve or surface it
/// keeps the third axis that it is given.
class KELD_TRANSL_EXPORT CartesianCoord
{
public:
    CartesianCoord(CartesianCoord const &) = default;
    CartesianCoord & operator=(CartesianCoord const &) = default;

    /// Makes a coordinate system that the caller owns. All values are kept bit for bit.
    static CartesianCoord * create(double const (&origin)[3], double const (&first)[3],
                                   double const (&second)[3], double const (&third)[3]);

    /// Frees a coordinate system; null is no fault.
    static void destruct(CartesianCoord * coord);

    /// Scales the origin about a centre; the axes stay. See `Curve::scale`.
    static void scale(CartesianCoord * coord, double const & factor, double const & centreX,
                      double const & centreY, double const & centreZ);

    virtual void getAxes(double (&origin)[3], double (&first)[3], double (&second)[3],
                         double (&third)[3]) = 0;

    // The destructor stands behind the getter in the table of operations.
protected:
    CartesianCoord() = default;
    virtual ~CartesianCoord() = default;
};

} // namespace geom

#endif
