#ifndef STEP_ASSEMBLY_STEP_FORMS_H
#define STEP_ASSEMBLY_STEP_FORMS_H

#include "parts.h"

#include <STEPControl_Writer.hxx>
#include <vector>

namespace vise {

/// Gives what `writer` has put into its model forms that a STEP file can hold and the kernel's
/// writer does not use: Bezier curves and surfaces where a spline has one segment without weights,
/// and offset curves for `offsetEdges`. Geometry stays what it is. Throws BuildFailure.
void useExactForms(STEPControl_Writer & writer, std::vector<OffsetEdge> const & offsetEdges);

} // namespace vise

#endif
