#ifndef KELD_TRANSL_GEOM_OWNED_H
#define KELD_TRANSL_GEOM_OWNED_H

#include <keld-transl/geom/curve.h>
#include <keld-transl/geom/surface.h>
#include <keld-transl/geom/uv_curve.h>

#include <memory>

namespace geom {

/// Frees a shape by the `destruct` of its class.
template <class Shape> struct Destruct
{
    void operator()(Shape * shape) const { Shape::destruct(shape); }
};

template <class Shape> using Owned = std::unique_ptr<Shape, Destruct<Shape>>;

using OwnedCurve = Owned<Curve>;
using OwnedSurface = Owned<Surface>;
using OwnedUVCurve = Owned<UVCurve>;

} // namespace geom

#endif
