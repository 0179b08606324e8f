#ifndef KELD_TOOLS_VIEW_COLOURS_H
#define KELD_TOOLS_VIEW_COLOURS_H

#include "view/mesh.h"

#include <keld-transl/model/sub_pool.h>

#include <unordered_map>

namespace keld::view {

/// The colours that attributes of the type 1 give to surfaces: one called "surface color" comes
/// before one called "color", and no other name counts.
class SurfaceColours
{
public:
    /// Of the current model.
    explicit SurfaceColours(transl_tk::SubPool const & model);

    /// What `entity` itself has got, not what it belongs to.
    std::optional<Colour> of(transl_tk::Base const * entity) const;

private:
    std::unordered_map<transl_tk::Base const *, Colour> m_Colours;
};

} // namespace keld::view

#endif
