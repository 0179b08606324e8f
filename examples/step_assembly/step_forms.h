#ifndef STEP_ASSEMBLY_STEP_FORMS_H
#define STEP_ASSEMBLY_STEP_FORMS_H

#include "parts.h"

#include <STEPControl_Writer.hxx>
#include <StepData_StepModel.hxx>
#include <vector>

namespace vise {

// Forms that a STEP file can hold and the kernel's writer does not use. Geometry stays what it is.

/// Puts offset curves into what `writer` has made, to be called before anything else changes it.
/// Throws BuildFailure.
void useOffsetCurves(STEPControl_Writer & writer, std::vector<OffsetEdge> const & offsetEdges);

/// Puts Bezier curves and surfaces where a spline has one segment and no weights, and all entities
/// into an order that is the same each time.
void useBezierForms(Handle(StepData_StepModel) const & model);

} // namespace vise

#endif
