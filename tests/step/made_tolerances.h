#ifndef KELD_TESTS_STEP_MADE_TOLERANCES_H
#define KELD_TESTS_STEP_MADE_TOLERANCES_H

#include <string>

namespace tests {

/// Writes a block with one dimension, one tolerance, and the datums A and B that it refers to; see
/// the source for all that is said about them.
void writeTolerances(std::string const & path);

/// The same, with a datum whose modifier has lost its value. The kernel follows the reference to it
/// when it reads the dimensions.
void writeBrokenTolerances(std::string const & path);

} // namespace tests

#endif
