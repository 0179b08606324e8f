#ifndef KELD_TOOLS_METADATA_OUTPUT_H
#define KELD_TOOLS_METADATA_OUTPUT_H

#include "catalogue/catalogue.h"
#include "json_output.h"
#include "run_outcome.h"

#include <keld-transl/model/sub_pool.h>

#include <string>
#include <vector>

namespace keld {

/// The counts as a table, then the features and the text, on standard output.
void printMetadata(Metadata const & metadata);

/// Metadata, and the run that brought it, as JSON.
void writeMetadataJson(std::string const & file, RunOutcome const & outcome,
                       Metadata const & metadata, transl_tk::SubPool & model, JsonOutput & output);

/// The entries of a catalogue on standard output.
void printCatalogue(std::vector<CatalogueEntry> const & entries);

/// The same as JSON.
void writeCatalogueJson(std::vector<CatalogueEntry> const & entries, JsonOutput & output);

} // namespace keld

#endif
