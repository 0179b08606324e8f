#ifndef KELD_TRANSL_TOPOLOGY_SPHERE_FACETS_H
#define KELD_TRANSL_TOPOLOGY_SPHERE_FACETS_H

#include "topology/tri_strip_data.h"

namespace transl_tk {

/// The mesh of a sphere, see `TriStrip::create`.
TriStripData sphereFacets(double const (&centre)[3], double radius,
                          unsigned char const (&colour)[3], TriStrip::Type type, bool flag);

} // namespace transl_tk

#endif
