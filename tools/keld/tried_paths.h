#ifndef KELD_TOOLS_TRIED_PATHS_H
#define KELD_TOOLS_TRIED_PATHS_H

#include <keld-transl/process/exec_paths.h>

#include <string>
#include <vector>

namespace keld {

/// A path, or a variable that should name one, at which something of a translator was looked for.
struct TriedPath
{
    std::string path;
    std::string finding; ///< "found", or what is wrong
};

/// Where a translator's outside library is looked for: a file in the folder that a variable names.
struct LibraryPlace
{
    char const * variable;
    char const * file; ///< with a leading slash; empty for the folder itself
    bool isNeeded;     ///< without the variable the translator cannot be used
};

bool isFound(TriedPath const & tried);

/// What that means for a translator that needs the program, in words behind "the translator"; empty
/// when it was found.
std::string troubleWith(TriedPath const & tried);

/// What is at `path`, where a program is wanted.
TriedPath tryProgram(std::string const & path);

/// Looks at the first of `places`, and at each further one when the one before named a folder
/// without the file.
std::vector<TriedPath> tryLibrary(std::vector<LibraryPlace> const & places);

/// Looks at the first of `paths`, and at each further one when nothing was at the one before.
std::vector<TriedPath> tryPrograms(std::vector<std::string> const & paths);

/// Looks for the Linux executables of a translator beside its script, whose path is empty when no
/// variable names an installation.
std::vector<TriedPath> tryExecutables(transl_tk::ExecPaths & paths, std::string const & script);

} // namespace keld

#endif
