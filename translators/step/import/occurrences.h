#ifndef KELD_STEP_IMPORT_OCCURRENCES_H
#define KELD_STEP_IMPORT_OCCURRENCES_H

#include "attribute_book.h"
#include "coverage.h"

#include <NCollection_DataMap.hxx>
#include <TDF_Label.hxx>
#include <TDF_LabelMapHasher.hxx>

namespace transl_tk {
class Instance;
}

namespace step {

using InstancesByPlace = NCollection_DataMap<TDF_Label, transl_tk::Instance *, TDF_LabelMapHasher>;

/// Adds the colours that a place has only where certain instances lead to it, as attributes of its
/// instance with the ids of these instances.
void addOccurrenceColours(InstancesByPlace const & instances, AttributeBook & attributes,
                          Coverage & coverage);

} // namespace step

#endif
