#ifndef KELD_EXAMPLES_PLATE_PRINT_MODEL_H
#define KELD_EXAMPLES_PLATE_PRINT_MODEL_H

#include <keld-transl/model/sub_pool.h>

#include <string>

namespace plate {

/// The geometry of a model as text, a carrier a line in the order of their ids, the numbers with as
/// many digits as tell them from all others: models with the same text have the same geometry.
/// Kinds that the plate does not have are named alone.
std::string geometryText(transl_tk::SubPool const & model);

} // namespace plate

#endif
