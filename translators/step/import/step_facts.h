#ifndef KELD_STEP_IMPORT_STEP_FACTS_H
#define KELD_STEP_IMPORT_STEP_FACTS_H

#include "import/document.h"

class STEPControl_Reader;

namespace step {

/// Fills in what a STEP file says beside its shapes: header, products, and which entity a
/// shape came from. Faces, shells and solids that the kernel could not read are counted as lost; of
/// other entities that it could not read, or does not know, the log tells.
void gatherFacts(STEPControl_Reader & reader, Document & document, translator_kit::Run & run,
                 Coverage & coverage);

} // namespace step

#endif
