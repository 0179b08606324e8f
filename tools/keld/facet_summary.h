#ifndef KELD_TOOLS_FACET_SUMMARY_H
#define KELD_TOOLS_FACET_SUMMARY_H

#include <keld-transl/model/sub_pool.h>

namespace keld {

/// Prints how many triangles and vertices all meshes of the model have together, the box around the
/// corners of the triangles, and their area. The joins of a strip and triangles with an index out
/// of range do not count.
void printFacets(transl_tk::SubPool const & model);

/// How many triangles that are.
unsigned long long trianglesIn(transl_tk::SubPool const & model);

} // namespace keld

#endif
