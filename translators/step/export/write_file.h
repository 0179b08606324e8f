#ifndef KELD_STEP_EXPORT_WRITE_FILE_H
#define KELD_STEP_EXPORT_WRITE_FILE_H

#include <keld-translator-kit/run.h>

#include <string>
#include <vector>

namespace step {

/// Writes the model to `path`: a STEP file (.step, .stp, .p21), or an STL file of its facets
/// (.stl). The file is read back and compared with the model before it takes its name; one that
/// differs is a failure, and what stood under the name stays.
void writeFile(std::string const & path, translator_kit::Run & run);

/// The two kinds of files.
void writeStep(std::string const & path, translator_kit::Run & run);
void writeStl(std::string const & path, translator_kit::Run & run);

/// Fails the run with these sentences, unless there are none.
void expectNone(std::vector<std::string> const & differences, std::string const & path,
                translator_kit::Run & run);

} // namespace step

#endif
