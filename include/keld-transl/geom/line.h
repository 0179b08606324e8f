#ifndef KELD_TRANSL_GEOM_LINE_H
#define KELD_TRANSL_GEOM_LINE_H

#include <keld-transl/geom/curve.h>

namespace geom {

/// A straight line through a point along a direction, whose length is kept.
class KELD_TRANSL_EXPORT Line : public Curve
{
protected:
    Line() = default;
    ~Line() override = default;

public:
    Line(Line const &) = default;
    Line & operator=(Line const &) = default;

    static Line * create(double const (&point)[3], double const (&direction)[3],
                         Parameterization const & parameterization);

    virtual void getPoint(double (&point)[3]) = 0;
    virtual void getDirection(double (&direction)[3]) = 0;
};

} // namespace geom

#endif
