#ifndef KELD_TESTS_STEP_EVALUATED_SHAPES_H
#define KELD_TESTS_STEP_EVALUATED_SHAPES_H

#include <gp_Pnt.hxx>
#include <gp_Pnt2d.hxx>

namespace geom {
class Curve;
class Surface;
class UVCurve;
} // namespace geom

namespace tests {

// Points of shapes of the toolkit, worked out from their numbers by the formulas that the
// translator's documentation has, without the kernel.

gp_Pnt pointAt(geom::Curve & curve, double parameter);
gp_Pnt pointAt(geom::Surface & surface, double u, double v);
gp_Pnt2d pointAt(geom::UVCurve & curve, double parameter);

} // namespace tests

#endif
