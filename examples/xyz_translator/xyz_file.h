#ifndef KELD_EXAMPLES_XYZ_FILE_H
#define KELD_EXAMPLES_XYZ_FILE_H

#include <keld-translator-kit/run.h>

#include <string>

namespace xyz {

/// Makes a point of the model for each line of `path`, with ids from 1 on in the order of the file.
///
/// A line that holds no point is named in the log and passed over: the first ones one by one, as
/// many as the integer option "warning_limit" says (10 without it), then how many more there are.
/// "inf" and "nan" are no position. A file without a single point is a failure.
void readPoints(std::string const & path, translator_kit::Run & run);

/// Writes the points of the model to `path` in the order of their ids, with as many digits as it
/// takes to read back the same values bit for bit. A point that is not finite is left out and named
/// in the log, in the same way as above. A model without points is a failure.
void writePoints(std::string const & path, translator_kit::Run & run);

} // namespace xyz

#endif
