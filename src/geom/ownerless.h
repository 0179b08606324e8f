#ifndef KELD_TRANSL_GEOM_OWNERLESS_H
#define KELD_TRANSL_GEOM_OWNERLESS_H

#include <keld-transl/geom/curve.h>
#include <keld-transl/geom/surface.h>

#include <cstddef>

namespace geom {

/// Shapes that nobody owns: the members of a composite and the base of an offset surface, where the
/// library made them while it read a model. The model they came with frees those that nobody has
/// destroyed by its end. For the thread that owns the model.

/// Remembers a shape for `model`.
void rememberOwnerless(void const * model, Curve * curve);
void rememberOwnerless(void const * model, Surface * surface);

/// Frees the shapes of `model` that are still there.
void freeOwnerless(void const * model);

/// Forgets a shape on its way out; most are not remembered.
void forgetOwnerless(void const * shape) noexcept;

} // namespace geom

#endif
