#ifndef KELD_TRANSL_GEOM_POINT_H
#define KELD_TRANSL_GEOM_POINT_H

#include <keld-transl/export.h>

namespace geom {

/// A position in space.
class KELD_TRANSL_EXPORT Point
{
protected:
    Point() = default;
    virtual ~Point() = default;

public:
    Point(Point const &) = default;
    Point & operator=(Point const &) = default;

    /// Makes a point that the caller owns. The coordinates are kept bit for bit.
    static Point * create(double const & x, double const & y, double const & z);

    /// Frees a point; null is no fault.
    static void destruct(Point * point);

    /// Scales the position about a centre; see `Curve::scale`.
    static void scale(Point * point, double const & factor, double const & centreX,
                      double const & centreY, double const & centreZ);

    virtual void getCoordinates(double & x, double & y, double & z) = 0;
};

} // namespace geom

#endif
