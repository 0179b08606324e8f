#ifndef KELD_STEP_EXPORT_STEP_HEADER_H
#define KELD_STEP_EXPORT_STEP_HEADER_H

#include <Standard_Handle.hxx>
#include <string>

class StepData_StepModel;

namespace step {

class ModelFacts;

/// Fills in the header of a file that is to be written to `path`: who made the model, as the model
/// says, and that this translator has written it.
void setHeader(opencascade::handle<StepData_StepModel> const & file, ModelFacts const & facts,
               std::string const & path);

} // namespace step

#endif
