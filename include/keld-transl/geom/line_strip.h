#ifndef KELD_TRANSL_GEOM_LINE_STRIP_H
#define KELD_TRANSL_GEOM_LINE_STRIP_H

#include <keld-transl/geom/curve.h>

namespace geom {

/// Points that are joined by straight lines.
class KELD_TRANSL_EXPORT LineStrip : public Curve
{
protected:
    LineStrip() = default;
    ~LineStrip() override = default;

public:
    LineStrip(LineStrip const &) = default;
    LineStrip & operator=(LineStrip const &) = default;

    /// Makes a strip without points.
    static LineStrip * create(Parameterization const & parameterization);

    /// Appends a point.
    virtual void addPoint(double const & x, double const & y, double const & z) = 0;

    virtual int getNumPoints() = 0;

    /// Fills three doubles for each point.
    virtual void getPoints(double * points) = 0;

    /// Calls `callback` for every point in order, `index` counting from 0. The coordinates are the
    /// stored ones: the callback moves a point by writing to them. `index` is a copy, and what the
    /// callback returns is ignored: the walk always runs to the end.
    virtual void forEachPoint(bool (*callback)(int & index, double & x, double & y, double & z,
                                               void * user),
                              void * user) = 0;
};

} // namespace geom

#endif
