#ifndef STEP_ASSEMBLY_WRITE_STEP_H
#define STEP_ASSEMBLY_WRITE_STEP_H

#include "vise.h"

#include <string>

namespace vise {

enum class Unit { Inch, Millimetre };

/// Writes a STEP file (AP242). The same drawing gives the same bytes each time. Throws
/// BuildFailure.
///
/// Offset curves are in files in millimetres alone, in the others they are splines: the kernel
/// writes none by itself, and takes the distance of those that it reads for millimetres whatever
/// the unit.
void writeStep(Drawing const & drawing, Unit unit, std::string const & path);

} // namespace vise

#endif
