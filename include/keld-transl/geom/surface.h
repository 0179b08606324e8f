#ifndef KELD_TRANSL_GEOM_SURFACE_H
#define KELD_TRANSL_GEOM_SURFACE_H

#include <keld-transl/export.h>
#include <keld-transl/geom/parameterization.h>

namespace geom {

/// Base of all exact surfaces.
///
/// Every kind X is made by a static `X::create` and freed by `Surface::destruct`; the caller owns
/// it until somebody adopts it. Surfaces are data that nothing in the toolkit evaluates: no
/// `create` looks at what the values mean, and all of them are kept bit for bit. Arrays and
/// parameterizations are copied, curves and surfaces are referred to; each kind says whether it
/// owns them.
///
/// Getters that fill an array need room for all that there is to fill.
///
/// A surface belongs to one thread at a time.
class KELD_TRANSL_EXPORT Surface
{
protected:
    Surface() = default;
    virtual ~Surface();

public:
    /// The kinds of surfaces. The numbers also lead the surfaces' records in the model stream.
    enum Type : int {
        BSpline = 2,
        Cone = 3,
        Cylinder = 4,
        Offset = 5,
        Revolution = 7,
        Ruled = 8,
        LinearExtrusion = 9,
        Torus = 10,
        Sphere = 11,
        Plane = 12
    };

    Surface(Surface const &) = default;
    Surface & operator=(Surface const &) = default;

    /// Frees a surface and the curves that it owns; null is no fault.
    static void destruct(Surface * surface);

    /// Scales a surface in place about a centre that stays where it is, with the curves that it
    /// holds and the base that it refers to: positions are moved away from the centre by `factor`;
    /// radii and distances grow by it. Directions, axes, angles, knots, weights and
    /// parameterizations stay. The axis point of a surface of revolution moves in x and y only.
    /// There is no guard against scaling twice a curve or base that two surfaces refer to.
    ///
    /// See `Curve::scale`, also for the curves that stay as they are.
    static void scale(Surface * surface, double const & factor, double const & centreX,
                      double const & centreY, double const & centreZ);

    virtual Type getType() = 0;

    /// The surface's own parameterizations, valid as long as the surface.
    virtual Parameterization const & getParameterizationU() = 0;
    virtual Parameterization const & getParameterizationV() = 0;
};

} // namespace geom

#endif
