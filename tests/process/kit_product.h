#ifndef KELD_TESTS_KIT_PRODUCT_H
#define KELD_TESTS_KIT_PRODUCT_H

#include <string>

namespace tests {

/// Makes a model in the current sub-pool when `name` is one of these; false when it is not.
///
///   product      an assembly of three levels with everything that hangs on one
///   parts        two parts without an assembly
///   placed       an assembly with an instance of a part that is no child of it
///   markup       names, entries and log words that mean something to a page or a terminal
///   long         one entry and one log line of a megabyte
///   lost         entries of all types about several kinds, known and unknown
///   many-lost    eight entries of type error about bodies
///   many-kinds   12000 entries of type error, each about another unknown kind
///   log-error    an error in the log alone
///   lists        log lines in several lists
///   deep         assemblies nested 5000 levels deep
///   wide         an assembly of 12000 parts
///   numbers      transforms and values that are hard to write
bool makeProduct(std::string const & name);

} // namespace tests

#endif
