#ifndef KELD_STEP_IMPORT_READ_FILE_H
#define KELD_STEP_IMPORT_READ_FILE_H

#include <string>

namespace translator_kit {
class Run;
}

namespace step {

/// Reads the STEP, IGES or BREP file `path`, told apart by their content, into the current
/// sub-pool.
void readFile(std::string const & path, translator_kit::Run & run);

} // namespace step

#endif
