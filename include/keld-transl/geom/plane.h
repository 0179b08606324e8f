#ifndef KELD_TRANSL_GEOM_PLANE_H
#define KELD_TRANSL_GEOM_PLANE_H

#include <keld-transl/geom/surface.h>

namespace geom {

/// A plane through its placement's location along the first two axes.
class KELD_TRANSL_EXPORT Plane : public Surface
{
protected:
    Plane() = default;
    ~Plane() override = default;

public:
    Plane(Plane const &) = default;
    Plane & operator=(Plane const &) = default;

    /// The third axis of the placement is computed as the cross product of the first with the
    /// second; the fourth array is never read.
    static Plane * create(double const (&location)[3], double const (&first)[3],
                          double const (&second)[3], double const (&ignored)[3],
                          Parameterization const & u, Parameterization const & v);

    virtual void getPlacement(double (&location)[3], double (&first)[3], double (&second)[3],
                              double (&third)[3]) = 0;
};

} // namespace geom

#endif
