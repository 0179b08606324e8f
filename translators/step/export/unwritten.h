#ifndef KELD_STEP_EXPORT_UNWRITTEN_H
#define KELD_STEP_EXPORT_UNWRITTEN_H

#include "coverage.h"

#include <set>

namespace transl_tk {
class Component;
class SubPool;
} // namespace transl_tk

namespace step {

struct LooseEntities;

/// Counts as lost what a STEP file does not take of a model: annotations, welds, coordinate
/// systems, facets, and components that are not among those that were `reached`.
void countUnwritten(transl_tk::SubPool & model, LooseEntities const & loose,
                    std::set<transl_tk::Component *> const & reached, Coverage & coverage);

} // namespace step

#endif
