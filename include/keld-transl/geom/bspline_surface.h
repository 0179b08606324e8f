#ifndef KELD_TRANSL_GEOM_BSPLINE_SURFACE_H
#define KELD_TRANSL_GEOM_BSPLINE_SURFACE_H

#include <keld-transl/geom/surface.h>

namespace geom {

/// A B-spline surface, rational when it has weights.
///
/// Knots are distinct values with multiplicities. Control points are kept in the order given, and
/// which direction runs fastest is the translators' affair, as is the meaning of the flags.
class KELD_TRANSL_EXPORT BSplineSurface : public Surface
{
protected:
    BSplineSurface() = default;
    ~BSplineSurface() override = default;

public:
    BSplineSurface(BSplineSurface const &) = default;
    BSplineSurface & operator=(BSplineSurface const &) = default;

    /// The knot arrays hold as many values as their counts say, `points` three for each of
    /// `pointCountU` times `pointCountV` control points, and `weights`, which may be null, one for
    /// each. `form` is the shape that the spline stands for, `BSpline` when it is none but itself.
    ///
    /// std::length_error with "vector<T> too long" when a knot count or the product of the point
    /// counts is negative, or the product is more than an array can hold.
    static BSplineSurface *
    create(int const & degreeU, bool const & flagAU, bool const & flagBU, int const & degreeV,
           bool const & flagAV, bool const & flagBV, int const & knotCountU,
           int const * multiplicitiesU, double const * knotsU, int const & knotCountV,
           int const * multiplicitiesV, double const * knotsV, int const & pointCountU,
           int const & pointCountV, double const * points, double const * weights,
           Parameterization const & u, Parameterization const & v, Surface::Type form);

    /// The shape that the spline stands for; `getType` is `BSpline` whatever it is.
    virtual Surface::Type getSurfaceForm() = 0;

    virtual void getSplineFormU(int & degree, bool & flagA, bool & flagB) = 0;
    virtual void getSplineFormV(int & degree, bool & flagA, bool & flagB) = 0;

    /// Whether the surface has weights.
    virtual bool isRational() = 0;

    virtual int getNumControlPointsU() = 0;
    virtual int getNumControlPointsV() = 0;
    /// Fills three doubles for each control point.
    virtual void getControlPoints(double * points) = 0;
    /// Fills a double for each control point; nothing when the surface is not rational.
    virtual void getWeights(double * weights) = 0;

    virtual int getNumKnotsU() = 0;
    virtual int getNumKnotsV() = 0;
    virtual void getKnotsU(double * knots, int * multiplicities) = 0;
    virtual void getKnotsV(double * knots, int * multiplicities) = 0;
};

} // namespace geom

#endif
