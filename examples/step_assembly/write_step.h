#ifndef STEP_ASSEMBLY_WRITE_STEP_H
#define STEP_ASSEMBLY_WRITE_STEP_H

#include "vise.h"

#include <string>

namespace vise {

/// Writes a STEP file (AP242) in inches. The same drawing gives the same bytes each time. Throws
/// BuildFailure.
void writeStep(Drawing const & drawing, std::string const & path);

} // namespace vise

#endif
