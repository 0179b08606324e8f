#ifndef KELD_STEP_EXPORT_KERNEL_GEOMETRY_H
#define KELD_STEP_EXPORT_KERNEL_GEOMETRY_H

#include <Geom2d_Curve.hxx>
#include <Standard_Handle.hxx>

class Geom_Curve;
class Geom_Surface;

namespace geom {
class Curve;
class Surface;
class UVCurve;
} // namespace geom

namespace step {

// Shapes of the kernel from those of the toolkit. Each is a Standard_Failure where the values make
// no shape, and for kinds that the kernel does not have.

opencascade::handle<Geom_Curve> kernelCurve(geom::Curve & curve);
opencascade::handle<Geom_Surface> kernelSurface(geom::Surface & surface);

/// A curve in the parameters of a surface, and the stretch of it that counts.
struct UvStretch
{
    opencascade::handle<Geom2d_Curve> curve;
    double first = 0;
    double last = 0;
};
UvStretch kernelUvCurve(geom::UVCurve & curve);

} // namespace step

#endif
