#ifndef KELD_EXAMPLES_STL_FILE_H
#define KELD_EXAMPLES_STL_FILE_H

#include <keld-translator-kit/run.h>

#include <string>

namespace stl {

/// Makes a body with one indexed mesh, whose flag is false, for each solid of `path`.
///
/// A file is binary when it is as long as the count in its header says, whatever its first word,
/// or when it is no text. An ASCII file may hold several solids; each names its body. A solid
/// without a name, and the only one of a binary file, goes by the file's name without folder and
/// suffix.
///
/// Corners with equal coordinates become one vertex; -0 is 0. Triangles stay in their order and
/// none is dropped, those of no area included. Normals and attribute bytes are passed over.
///
/// What stands behind the last triangle is passed over with a warning. A file that is cut, that
/// counts wrong, or that holds a coordinate that is not finite is a failure and makes nothing, and
/// so is one without triangles.
void readStl(std::string const & path, translator_kit::Run & run);

/// Writes the triangles of all meshes of the model to `path`, those of bodies first, with normals
/// worked out from the corners: a binary file, or with the option "ascii" an ASCII file, where each
/// body is a solid of its own and the meshes of no body are one together.
///
/// A mesh without indices is a strip: every second triangle is turned round, and those that join
/// two parts of a strip, with two corners in one place, are left out. Triangles with an index out
/// of range or a corner that is not finite are left out with a warning, the first ones one by one,
/// as many as the integer option "warning_limit" says (10 without it). A model without a triangle
/// is a failure.
void writeStl(std::string const & path, translator_kit::Run & run);

} // namespace stl

#endif
