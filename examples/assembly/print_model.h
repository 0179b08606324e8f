#ifndef KELD_EXAMPLES_ASSEMBLY_PRINT_MODEL_H
#define KELD_EXAMPLES_ASSEMBLY_PRINT_MODEL_H

#include <keld-transl/model/sub_pool.h>

#include <string>

namespace assembly {

/// The current model as text: the product tree with transforms, units and labels, the parameter
/// trees, attributes, annotations and report entries, the numbers with as many digits as tell them
/// from all others. Models with the same text are the same, geometry apart.
std::string modelText(transl_tk::SubPool const & model);

} // namespace assembly

#endif
