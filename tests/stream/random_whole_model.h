#ifndef KELD_TESTS_STREAM_RANDOM_WHOLE_MODEL_H
#define KELD_TESTS_STREAM_RANDOM_WHOLE_MODEL_H

#include "stream/whole_model_description.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace tests {

/// What the models that were made in this run had in them, to see that nothing was left out.
extern std::set<std::string> featuresOfWholeModels;

/// Makes a model of everything in the current sub-pool, which is empty, and gives what it must tell
/// once its size has been asked. Geometry and topology have no description of their own here: their
/// getters are asked. `shapes` keeps what the model's shapes refer to.
///
/// Left out: floats, which cannot be written; values of foreign types, which arrive as null ones;
/// facets without vertices and null entries of lists, which are not sent on.
WholeModelDescription makeRandomWholeModel(std::vector<std::uint64_t> const & decisions,
                                           ShapeMaker & shapes);

} // namespace tests

#endif
