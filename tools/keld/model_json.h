#ifndef KELD_TOOLS_MODEL_JSON_H
#define KELD_TOOLS_MODEL_JSON_H

#include "json_output.h"
#include "run_outcome.h"

#include <keld-transl/model/sub_pool.h>

#include <string>

namespace keld {

/// The current model and the run that brought it as JSON, as docs/json.md has it.
void writeModelJson(std::string const & file, RunOutcome const & outcome,
                    transl_tk::SubPool & model, JsonOutput & output);

} // namespace keld

#endif
