#ifndef KELD_STEP_IMPORT_PMI_H
#define KELD_STEP_IMPORT_PMI_H

#include "attribute_book.h"
#include "coverage.h"
#include "import/label_entities.h"

class TDocStd_Document;

namespace step {

/// Moves dimensions, geometric tolerances and datums into the model: each becomes an annotation of
/// the part that it belongs to, and an attribute of the annotation and of the faces and edges that
/// it is about. One that makes the kernel throw is counted as lost.
void addPmi(TDocStd_Document const & document, EntitiesByLabel const & entities,
            AttributeBook & attributes, Coverage & coverage);

} // namespace step

#endif
