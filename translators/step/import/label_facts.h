#ifndef KELD_STEP_IMPORT_LABEL_FACTS_H
#define KELD_STEP_IMPORT_LABEL_FACTS_H

#include "attribute_book.h"
#include "coverage.h"

#include <TDF_Label.hxx>
#include <string>
#include <utility>
#include <vector>

namespace step {

/// The name that stands on a label of a document, in UTF-8; empty when there is none.
std::string nameOf(TDF_Label const & label);

/// A colour for all, for surfaces or for curves, with the name of its attribute.
using NamedColour = std::pair<char const *, AttributeBook::Colour>;

/// The colours that stand on a label of a document.
std::vector<NamedColour> coloursOf(TDF_Label const & label);

/// Gives `entity` what stands on a label of a document: colours, layers, the material, validation
/// properties.
void addFacts(TDF_Label const & label, transl_tk::Base * entity, AttributeBook & attributes,
              Coverage & coverage);

} // namespace step

#endif
