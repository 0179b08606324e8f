#ifndef KELD_TRANSLATOR_KIT_METADATA_ONLY_H
#define KELD_TRANSLATOR_KIT_METADATA_ONLY_H

#include <keld-transl/metadata/database_policy.h>

namespace translator_kit {

/// Replaces the current model by its metadata, together with what `policy` holds already. The log
/// of the model stays.
void keepMetadataOnly(transl_tk::DataBasePolicy & policy);

} // namespace translator_kit

#endif
