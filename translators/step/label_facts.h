#ifndef KELD_STEP_LABEL_FACTS_H
#define KELD_STEP_LABEL_FACTS_H

#include "attribute_book.h"
#include "coverage.h"

#include <TDF_Label.hxx>
#include <string>

namespace step {

/// The name that stands on a label of a document, in UTF-8; empty when there is none.
std::string nameOf(TDF_Label const & label);

/// Gives `entity` what stands on a label of a document: colours, layers, the material, validation
/// properties.
void addFacts(TDF_Label const & label, transl_tk::Base * entity, AttributeBook & attributes,
              Coverage & coverage);

} // namespace step

#endif
