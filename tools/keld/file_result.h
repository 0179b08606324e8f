#ifndef KELD_TOOLS_FILE_RESULT_H
#define KELD_TOOLS_FILE_RESULT_H

#include "exit_code.h"

#include <array>
#include <string>

namespace keld {

/// What is counted of each of several files, in the order of the columns.
enum FileCount : std::size_t { Points, Parts, Bodies, Faces, Triangles, Lost, FileCounts };

/// What came of one of several files.
struct FileResult
{
    ExitCode code = RunFailed;
    std::string reason; ///< why it is no success, a sentence or two; empty for a success
    std::string report; ///< the path of the run's report; empty for none

    /// Points are counted of a model that holds nothing else. Lost are the entities that the
    /// translator reports errors about.
    std::array<unsigned long long, FileCounts> counts{};
};

} // namespace keld

#endif
