#ifndef KELD_STEP_EXPORT_PLACING_H
#define KELD_STEP_EXPORT_PLACING_H

#include <gp_Mat.hxx>
#include <gp_Trsf.hxx>
#include <optional>

namespace transl_tk {
class Hierarchy;
}

namespace step {

/// A transform taken apart: what is to be done with a shape first, about its origin, and the move
/// that follows. `rest` is the identity for a transform that moves and turns only; it is a multiple
/// of the identity where the transform scales, a negative one where it mirrors.
struct Placing
{
    gp_Trsf move;
    gp_Mat rest;
};

bool isIdentity(gp_Mat const & map);

/// Whether nothing moves and nothing is changed.
bool isIdentity(Placing const & placing);

/// What `node`'s transform does with its shape where `above` is done with the whole. Nothing for a
/// transform that flattens, or that is not finite.
std::optional<Placing> placingOf(transl_tk::Hierarchy & node, gp_Mat const & above);

} // namespace step

#endif
